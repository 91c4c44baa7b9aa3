#pragma once

#include "platform/FileSystemLayer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <system_error>

namespace quillbay {

/// Counts the operations and lets one of them fail, or lets the process end there: from then on nothing is
/// done any more and every operation fails. A hook sees them all, in the middle of the work.
class FaultyFileSystem : public FileSystemLayer<FaultyFileSystem> {
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

    using FileSystemLayer::FileSystemLayer;
    using Text = std::string_view;

    /// The `number`-th operation (from 1) meets the fault.
    void Arm(std::size_t number, Fault fault, std::errc error = std::errc::io_error) {
        trace_.clear();
        ended_ = false;
        at_ = number;
        fault_ = fault;
        error_ = std::make_error_code(error);
    }
    /// A hook for a game that lies on another disk than the mods: no name can be moved between them.
    static std::error_code OnTwoDisks(Text operation, Text path, Text to) {
        const auto isInGame = [](Text text) { return text.find("game") != text.npos; };
        const bool isMoved = operation == "HardLink" || operation.starts_with("Rename");
        return std::make_error_code(isMoved && isInGame(path) != isInGame(to) ? std::errc::cross_device_link
                                                                              : std::errc());
    }
    /// Runs before an operation and lets it fail with what it returns. `to` is the second path; a copy that
    /// is to be flushed is called "FlushedCopy".
    std::function<std::error_code(Text operation, Text path, Text to)> hook;
    std::string mount; ///< the name of a folder where something is mounted
    /// One character for each operation so far: 'c' for one that writes under the temporary name first,
    /// 't' for the removal of a tree, '.' for any other.
    const std::string& Trace() const { return trace_; }

    Result<FileInfo> Stat(Text path) const override {
        auto info = FileSystemLayer::Stat(path);
        if (info && !mount.empty()) info->isMount = info->name == mount;
        return info;
    }
    std::error_code RemoveTree(Text folder) override;
    std::error_code Copy(Text from, Text to, CopyOptions options) override;
    std::error_code WriteFile(Text file, Text bytes) override;
    /// Each Write and the Commit are operations of their own.
    Result<std::unique_ptr<FileWriter>> MakeFile(Text file, NewFile traits) override;

private:
    friend FileSystemLayer;
    class Writer;

    template <typename Operation>
    auto Reading(Text name, Text path, Text to, Operation operation) const -> decltype(operation()) {
        if (ended_) return error_;
        if (const auto refused = hook ? hook(name, path, to) : std::error_code()) return refused;
        const bool isWhole = name == "WriteFile" || name.ends_with("Copy");
        trace_.push_back(isWhole ? 'c' : name == "RemoveTree" ? 't' : '.');
        if (trace_.size() != at_ || fault_ == Fault::None) return operation();
        ended_ = fault_ != Fault::Fail;
        if (fault_ == Fault::EndAfter) return operation();
        return error_;
    }
    template <typename Operation>
    auto Writing(Text name, Text path, Text to, Operation operation) -> decltype(operation()) {
        return Reading(name, path, to, operation);
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
};

/// The cases of a sweep are met in steps of this many; 1 unless QUILLBAY_SWEEP_STRIDE of the environment says
/// otherwise.
std::size_t SweepStride();

/// Lets `run` meet the faults at each operation of a trace, those that differ there, until a case has failed.
/// A long run does the same many times: behind the `dense`-th operation every 25th is enough.
void SweepFaults(const std::string& trace, std::initializer_list<FaultyFileSystem::Fault> faults,
                 const std::function<void(std::size_t number, FaultyFileSystem::Fault)>& run,
                 std::size_t dense = SIZE_MAX);

} // namespace quillbay
