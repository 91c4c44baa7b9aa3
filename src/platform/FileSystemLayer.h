#pragma once

#include "platform/FileSystem.h"
#include "platform/FingerprintsAhead.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace quillbay {

/// Passes every operation on to another file system, by way of one place in the class `Layer` that derives
/// from this: `Reading(name, path, second, operation)` for those that change nothing, `Writing` for the
/// others. The name is that of the operation, `second` its second text, which may be empty; `operation()`
/// does it.
template <typename Layer>
class FileSystemLayer : public FileSystem {
public:
    explicit FileSystemLayer(FileSystem& base) : base_(base) {}

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        return Self().Reading("List", folder, {}, [&] { return base_.List(folder, detail); });
    }
    Result<FileInfo> Stat(std::string_view path) const override {
        return Self().Reading("Stat", path, {}, [&] { return base_.Stat(path); });
    }
    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override {
        return Self().Reading("Read", file, {}, [&] { return base_.Read(file, offset, maxBytes); });
    }
    Result<std::string> ReadLink(std::string_view path) const override {
        return Self().Reading("ReadLink", path, {}, [&] { return base_.ReadLink(path); });
    }
    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        return Self().Reading("SameContents", file, other, [&] { return base_.SameContents(file, other); });
    }
    Result<Fingerprint> FingerprintFile(std::string_view file) const override {
        return Self().Reading("FingerprintFile", file, {}, [&] { return base_.FingerprintFile(file); });
    }
    Result<std::uint64_t> TreeSize(std::string_view folder) const override {
        return Self().Reading("TreeSize", folder, {}, [&] { return base_.TreeSize(folder); });
    }
    Result<std::string> RealPath(std::string_view path) const override {
        return Self().Reading("RealPath", path, {}, [&] { return base_.RealPath(path); });
    }
    Result<DiskSpace> SpaceAt(std::string_view folder) const override {
        return Self().Reading("SpaceAt", folder, {}, [&] { return base_.SpaceAt(folder); });
    }
    /// By this object's own FingerprintFile, one after the other.
    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override {
        return std::make_unique<FingerprintsAhead>(*this, std::move(files), 0);
    }

    std::error_code TryToWrite(std::string_view folder) override {
        return Self().Writing("TryToWrite", folder, {}, [&] { return base_.TryToWrite(folder); });
    }
    std::error_code MakeFolder(std::string_view folder) override {
        return Self().Writing("MakeFolder", folder, {}, [&] { return base_.MakeFolder(folder); });
    }
    std::error_code RemoveEmptyFolder(std::string_view folder) override {
        return Self().Writing("RemoveEmptyFolder", folder, {},
                              [&] { return base_.RemoveEmptyFolder(folder); });
    }
    std::error_code RemoveFile(std::string_view file) override {
        return Self().Writing("RemoveFile", file, {}, [&] { return base_.RemoveFile(file); });
    }
    std::error_code RemoveTree(std::string_view folder) override {
        return Self().Writing("RemoveTree", folder, {}, [&] { return base_.RemoveTree(folder); });
    }
    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override {
        return Self().Writing("Copy", from, to, [&] { return base_.Copy(from, to, options); });
    }
    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        return Self().Writing("HardLink", from, to, [&] { return base_.HardLink(from, to, replace); });
    }
    std::error_code Rename(std::string_view from, std::string_view to) override {
        return Self().Writing("Rename", from, to, [&] { return base_.Rename(from, to); });
    }
    std::error_code RenameOver(std::string_view from, std::string_view to) override {
        return Self().Writing("RenameOver", from, to, [&] { return base_.RenameOver(from, to); });
    }
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        return Self().Writing("WriteFile", file, bytes, [&] { return base_.WriteFile(file, bytes); });
    }
    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override {
        return Self().Writing("MakeFile", file, {}, [&] { return base_.MakeFile(file, traits); });
    }
    std::error_code SetReadOnly(std::string_view file, bool readOnly) override {
        return Self().Writing("SetReadOnly", file, {}, [&] { return base_.SetReadOnly(file, readOnly); });
    }
    std::error_code SetModified(std::string_view path, FileTime time) override {
        return Self().Writing("SetModified", path, {}, [&] { return base_.SetModified(path, time); });
    }

protected:
    FileSystem& Base() const { return base_; }

private:
    Layer& Self() { return static_cast<Layer&>(*this); }
    const Layer& Self() const { return static_cast<const Layer&>(*this); }

    FileSystem& base_;
};

} // namespace quillbay
