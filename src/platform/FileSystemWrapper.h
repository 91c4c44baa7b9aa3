#pragma once

#include "platform/FileSystem.h"
#include "platform/FingerprintsAhead.h"

namespace quillbay {

/// Forwards every operation to another file system; a test overrides only what it breaks or counts.
class FileSystemWrapper : public FileSystem {
public:
    explicit FileSystemWrapper(FileSystem& base) : base_(base) {}

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        return base_.List(folder, detail);
    }
    Result<FileInfo> Stat(std::string_view path) const override { return base_.Stat(path); }
    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override {
        return base_.Read(file, offset, maxBytes);
    }
    Result<std::string> ReadLink(std::string_view path) const override { return base_.ReadLink(path); }
    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        return base_.SameContents(file, other);
    }
    Result<Fingerprint> FingerprintFile(std::string_view file) const override {
        return base_.FingerprintFile(file);
    }
    /// By this object's own FingerprintFile, one after the other.
    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override {
        return std::make_unique<FingerprintsAhead>(*this, std::move(files), 0);
    }
    Result<std::uint64_t> TreeSize(std::string_view folder) const override { return base_.TreeSize(folder); }
    Result<std::string> RealPath(std::string_view path) const override { return base_.RealPath(path); }
    Result<DiskSpace> SpaceAt(std::string_view folder) const override { return base_.SpaceAt(folder); }

    std::error_code TryToWrite(std::string_view folder) override { return base_.TryToWrite(folder); }
    std::error_code MakeFolder(std::string_view folder) override { return base_.MakeFolder(folder); }
    std::error_code RemoveEmptyFolder(std::string_view folder) override {
        return base_.RemoveEmptyFolder(folder);
    }
    std::error_code RemoveFile(std::string_view file) override { return base_.RemoveFile(file); }
    std::error_code RemoveTree(std::string_view folder) override { return base_.RemoveTree(folder); }
    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override {
        return base_.Copy(from, to, options);
    }
    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        return base_.HardLink(from, to, replace);
    }
    std::error_code Rename(std::string_view from, std::string_view to) override {
        return base_.Rename(from, to);
    }
    std::error_code RenameOver(std::string_view from, std::string_view to) override {
        return base_.RenameOver(from, to);
    }
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        return base_.WriteFile(file, bytes);
    }
    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override {
        return base_.MakeFile(file, traits);
    }
    std::error_code SetReadOnly(std::string_view file, bool readOnly) override {
        return base_.SetReadOnly(file, readOnly);
    }
    std::error_code SetModified(std::string_view path, FileTime time) override {
        return base_.SetModified(path, time);
    }

protected:
    FileSystem& Base() const { return base_; }

private:
    FileSystem& base_;
};

} // namespace quillbay
