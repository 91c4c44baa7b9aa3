#pragma once

#include "platform/FileSystemWrapper.h"

#include <cstddef>
#include <memory>
#include <string>
#include <system_error>

namespace quillbay {

/// Counts the operations and lets one of them fail, or lets the process end there: from then on nothing is
/// done any more and every operation fails.
class FaultyFileSystem : public FileSystemWrapper {
public:
    enum class Fault {
        None,
        Fail,         ///< the operation does nothing and reports the error
        EndBefore,    ///< the process ends before the operation
        EndTempHalf,  ///< it ends with half of the new bytes under the temporary name, or half of a tree gone
        EndTempWhole, ///< it ends with all of them there
        EndSwapped,   ///< it ends with the new file in place and the old one under the temporary name
        EndAfter,     ///< it ends after the operation
    };

    using FileSystemWrapper::FileSystemWrapper;
    using Text = std::string_view;

    /// The `number`-th operation (from 1) meets the fault.
    void Arm(std::size_t number, Fault fault, std::errc error = std::errc::io_error) {
        trace_.clear();
        ended_ = false;
        at_ = number;
        fault_ = fault;
        error_ = std::make_error_code(error);
    }
    /// Hard links are not supported from now on.
    void ForbidHardLinks() { hardLinks_ = false; }
    /// One character for each operation so far: 'c' for one that writes under the temporary name first,
    /// 't' for the removal of a tree, '.' for any other.
    const std::string& Trace() const { return trace_; }

    Result<std::vector<DirEntry>> List(Text folder, Detail detail) const override {
        return Meet('.', &FileSystem::List, folder, detail);
    }
    Result<FileInfo> Stat(Text path) const override { return Meet('.', &FileSystem::Stat, path); }
    Result<std::string> Read(Text file, std::uint64_t offset, std::size_t maxBytes) const override {
        return Meet('.', &FileSystem::Read, file, offset, maxBytes);
    }
    Result<std::string> ReadLink(Text path) const override { return Meet('.', &FileSystem::ReadLink, path); }
    Result<bool> SameContents(Text file, Text other) const override {
        return Meet('.', &FileSystem::SameContents, file, other);
    }
    Result<Fingerprint> FingerprintFile(Text file) const override {
        return Meet('.', &FileSystem::FingerprintFile, file);
    }
    Result<std::string> RealPath(Text path) const override { return Meet('.', &FileSystem::RealPath, path); }
    Result<DiskSpace> SpaceAt(Text folder) const override { return Meet('.', &FileSystem::SpaceAt, folder); }
    std::error_code MakeFolder(Text folder) override { return Meet('.', &FileSystem::MakeFolder, folder); }
    std::error_code RemoveEmptyFolder(Text folder) override {
        return Meet('.', &FileSystem::RemoveEmptyFolder, folder);
    }
    std::error_code RemoveFile(Text file) override { return Meet('.', &FileSystem::RemoveFile, file); }
    std::error_code RemoveTree(Text folder) override;
    std::error_code Copy(Text from, Text to, CopyOptions options) override;
    std::error_code HardLink(Text from, Text to, bool replace) override {
        if (!hardLinks_) return std::make_error_code(std::errc::operation_not_supported);
        return Meet('.', &FileSystem::HardLink, from, to, replace);
    }
    std::error_code Rename(Text from, Text to) override { return Meet('.', &FileSystem::Rename, from, to); }
    std::error_code WriteFile(Text file, Text bytes) override;
    /// Each Write and the Commit are operations of their own.
    Result<std::unique_ptr<FileWriter>> MakeFile(Text file, NewFile traits) override;
    std::error_code SetReadOnly(Text file, bool readOnly) override {
        return Meet('.', &FileSystem::SetReadOnly, file, readOnly);
    }
    std::error_code SetModified(Text path, FileTime time) override {
        return Meet('.', &FileSystem::SetModified, path, time);
    }

private:
    class Writer;

    template <typename Operation, typename... Arguments>
    auto Meet(char kind, Operation operation, const Arguments&... arguments) const
        -> decltype((Base().*operation)(arguments...)) {
        return MeetBy(kind, [&] { return (Base().*operation)(arguments...); });
    }
    template <typename Operation>
    auto MeetBy(char kind, Operation operation) const -> decltype(operation()) {
        if (ended_) return error_;
        trace_.push_back(kind);
        if (trace_.size() != at_ || fault_ == Fault::None) return operation();
        ended_ = fault_ != Fault::Fail;
        if (fault_ == Fault::EndAfter) return operation();
        return error_;
    }
    bool IsNext() const { return !ended_ && trace_.size() + 1 == at_; }
    /// What the end of the process in the middle of writing `bytes` to `to` leaves; `replace` puts the new
    /// file in place.
    template <typename Replace>
    void LeaveTemp(Text to, Text bytes, Replace replace);

    mutable std::string trace_;
    mutable bool ended_ = false;
    std::size_t at_ = 0;
    Fault fault_ = Fault::None;
    std::error_code error_ = std::make_error_code(std::errc::io_error);
    bool hardLinks_ = true;
};

} // namespace quillbay
