#pragma once

#include "platform/FileSystem.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace quillbay {

/// Reads files from the first to the last: on a few threads of its own, while its owner does something else,
/// and on the owner's when that waits.
class FingerprintsAhead : public FingerprintReader {
public:
    static constexpr std::size_t kMostReaders = 3; ///< more would let a hard disk seek to and fro

    /// `files` must outlive it and, where there are readers, be usable from several threads.
    FingerprintsAhead(const FileSystem& files, FilesByIndex named, std::size_t mostReaders = kMostReaders);
    ~FingerprintsAhead() override;

    Result<Fingerprint> Take(std::size_t index) override;

private:
    /// Reads the next file that nobody has begun; false when there is none.
    bool ReadNext();

    const FileSystem& files_;
    FilesByIndex named_;
    std::vector<std::optional<Result<Fingerprint>>> read_;
    std::unique_ptr<std::atomic<bool>[]> isRead_;
    std::atomic<std::size_t> next_ = 0;
    std::vector<std::jthread> readers_; ///< ended before what they use
};

} // namespace quillbay
