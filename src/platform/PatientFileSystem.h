#pragma once

#include "platform/FileSystemLayer.h"
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
class PatientFileSystem : public FileSystemLayer<PatientFileSystem> {
public:
    PatientFileSystem(std::unique_ptr<FileSystem> base, Pause pause);

    Result<FileInfo> StatContents(std::string_view path) const override;
    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override;
    /// Does not wait: a missing right is what is asked for.
    std::error_code TryToWrite(std::string_view folder) override { return Base().TryToWrite(folder); }
    std::error_code RemoveTree(std::string_view folder) override;
    /// The writer must not outlive the file system.
    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override;

private:
    friend FileSystemLayer;
    class Writer;

    /// Together about a second.
    static constexpr std::chrono::milliseconds kPauses[] = {
        std::chrono::milliseconds(10), std::chrono::milliseconds(20),  std::chrono::milliseconds(40),
        std::chrono::milliseconds(80), std::chrono::milliseconds(160), std::chrono::milliseconds(320),
        std::chrono::milliseconds(400)};

    static std::error_code ErrorOf(const std::error_code& error) { return error; }
    template <typename T>
    static std::error_code ErrorOf(const Result<T>& result) {
        return result.Error();
    }

    /// `isPassing(error)` tells what is tried again.
    template <typename Operation, typename IsPassing>
    auto Persist(Operation operation, IsPassing isPassing) const {
        auto result = operation();
        std::chrono::milliseconds waited(0);
        for (const auto pause : kPauses) {
            if (!isPassing(ErrorOf(result)) || !patience_.Take(pause)) break;
            pause_(pause);
            waited += pause;
            result = operation();
        }
        if (waited.count() > 0 && !isPassing(ErrorOf(result))) patience_.GiveBack(waited);
        return result;
    }
    template <typename Operation>
    auto Reading(std::string_view, std::string_view, std::string_view, Operation operation) const {
        return Persist(operation, [](auto error) { return MayPass(error, FileAccess::Reading); });
    }
    template <typename Operation>
    auto Writing(std::string_view, std::string_view, std::string_view, Operation operation) {
        return Persist(operation, [](auto error) { return MayPass(error, FileAccess::Writing); });
    }

    std::unique_ptr<FileSystem> base_;
    Pause pause_;
    mutable Patience patience_;
};

} // namespace quillbay
