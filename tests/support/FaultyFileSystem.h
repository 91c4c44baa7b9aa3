#pragma once

#include "platform/FileSystemWrapper.h"

#include <cstddef>
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

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        return Meet('.', [&] { return Base().List(folder, detail); });
    }
    Result<FileInfo> Stat(std::string_view path) const override {
        return Meet('.', [&] { return Base().Stat(path); });
    }
    Result<std::string> Read(std::string_view file, std::uint64_t offset, std::size_t max) const override {
        return Meet('.', [&] { return Base().Read(file, offset, max); });
    }
    Result<std::string> ReadLink(std::string_view path) const override {
        return Meet('.', [&] { return Base().ReadLink(path); });
    }
    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        return Meet('.', [&] { return Base().SameContents(file, other); });
    }
    Result<std::string> RealPath(std::string_view path) const override {
        return Meet('.', [&] { return Base().RealPath(path); });
    }
    std::error_code MakeFolder(std::string_view folder) override {
        return Meet('.', [&] { return Base().MakeFolder(folder); });
    }
    std::error_code RemoveEmptyFolder(std::string_view folder) override {
        return Meet('.', [&] { return Base().RemoveEmptyFolder(folder); });
    }
    std::error_code RemoveFile(std::string_view file) override {
        return Meet('.', [&] { return Base().RemoveFile(file); });
    }
    std::error_code RemoveTree(std::string_view folder) override;
    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override;
    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        if (!hardLinks_) return std::make_error_code(std::errc::operation_not_supported);
        return Meet('.', [&] { return Base().HardLink(from, to, replace); });
    }
    std::error_code Rename(std::string_view from, std::string_view to) override {
        return Meet('.', [&] { return Base().Rename(from, to); });
    }
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override;
    std::error_code SetReadOnly(std::string_view file, bool readOnly) override {
        return Meet('.', [&] { return Base().SetReadOnly(file, readOnly); });
    }
    std::error_code SetModified(std::string_view path, FileTime time) override {
        return Meet('.', [&] { return Base().SetModified(path, time); });
    }

private:
    template <typename Do>
    auto Meet(char kind, Do operation) const -> decltype(operation()) {
        if (ended_) return error_;
        trace_.push_back(kind);
        if (trace_.size() != at_ || fault_ == Fault::None) return operation();
        if (fault_ == Fault::Fail) return error_;
        ended_ = true;
        if (fault_ == Fault::EndAfter) return operation();
        return error_;
    }
    bool IsNext() const { return !ended_ && trace_.size() + 1 == at_; }
    /// What the end of the process in the middle of writing `bytes` to `to` leaves; `replace` puts the new
    /// file in place.
    template <typename Replace>
    void LeaveTemp(std::string_view to, std::string_view bytes, Replace replace);

    mutable std::string trace_;
    mutable bool ended_ = false;
    std::size_t at_ = 0;
    Fault fault_ = Fault::None;
    std::error_code error_ = std::make_error_code(std::errc::io_error);
    bool hardLinks_ = true;
};

} // namespace quillbay
