#pragma once

#include "platform/FileSystemWrapper.h"
#include "platform/PassingError.h"

#include <chrono>
#include <memory>
#include <mutex>

namespace quillbay {

/// How long may be waited in vain. One that is refused for good is told by nothing from one that is refused
/// for a moment, so that without a bound a job of ten thousand files that may not be written would wait for
/// hours.
class Patience {
public:
    /// Within one minute.
    static constexpr std::chrono::milliseconds kMostInVain{8000};

    /// Takes the time out of what may be waited; false when there is not so much left.
    bool Take(std::chrono::milliseconds time);
    /// The waiting was not in vain.
    void GiveBack(std::chrono::milliseconds time);

private:
    std::mutex mutex_; ///< files are read on several threads
    std::chrono::steady_clock::time_point since_;
    std::chrono::milliseconds taken_{0};
};

/// Tries what meets an error that may pass again, for about a second with growing pauses.
class PatientFileSystem : public FileSystemWrapper {
public:
    PatientFileSystem(std::unique_ptr<FileSystem> base, Pause pause);

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override;
    Result<FileInfo> Stat(std::string_view path) const override;
    Result<FileInfo> StatContents(std::string_view path) const override;
    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override;
    Result<std::string> ReadLink(std::string_view path) const override;
    Result<bool> SameContents(std::string_view file, std::string_view other) const override;
    Result<Fingerprint> FingerprintFile(std::string_view file) const override;
    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override;
    Result<std::uint64_t> TreeSize(std::string_view folder) const override;
    Result<std::string> RealPath(std::string_view path) const override;
    Result<DiskSpace> SpaceAt(std::string_view folder) const override;

    std::error_code MakeFolder(std::string_view folder) override;
    std::error_code RemoveEmptyFolder(std::string_view folder) override;
    std::error_code RemoveFile(std::string_view file) override;
    std::error_code RemoveTree(std::string_view folder) override;
    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override;
    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override;
    std::error_code Rename(std::string_view from, std::string_view to) override;
    std::error_code RenameOver(std::string_view from, std::string_view to) override;
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override;
    /// The writer must not outlive the file system.
    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override;
    std::error_code SetReadOnly(std::string_view file, bool readOnly) override;
    std::error_code SetModified(std::string_view path, FileTime time) override;

private:
    class Writer;

    /// `isPassing(error)` tells what is tried again.
    template <typename Operation, typename IsPassing>
    auto Persist(Operation operation, IsPassing isPassing) const -> decltype(operation());
    template <typename Operation, typename... Arguments>
    auto Reading(Operation operation, const Arguments&... arguments) const
        -> decltype((Base().*operation)(arguments...));
    template <typename Operation, typename... Arguments>
    auto Writing(Operation operation, const Arguments&... arguments)
        -> decltype((Base().*operation)(arguments...));

    std::unique_ptr<FileSystem> base_;
    Pause pause_;
    mutable Patience patience_;
};

} // namespace quillbay
