#include "platform/FingerprintsAhead.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace quillbay {

namespace {

/// A thread costs more than reading fewer files than that.
constexpr std::size_t kFilesOfReader = 64;

} // namespace

FingerprintsAhead::FingerprintsAhead(const FileSystem& files, FilesByIndex named, std::size_t mostReaders)
    : files_(files), named_(std::move(named)), read_(named_.count),
      isRead_(std::make_unique<std::atomic<bool>[]>(named_.count)) {
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1U);
    const auto count = std::min({processors - 1, mostReaders, named_.count / kFilesOfReader});
    try {
        for (std::size_t i = 0; i < count; ++i)
            readers_.emplace_back([this] {
                while (ReadNext()) {
                }
            });
    } catch (
        const std::system_error&) { // a thread that the system does not give: the others read, or the owner
    }
}

FingerprintsAhead::~FingerprintsAhead() { next_ = named_.count; }

Result<Fingerprint> FingerprintsAhead::Take(std::size_t index) {
    while (!isRead_[index])
        if (!ReadNext()) isRead_[index].wait(false);
    return *read_[index];
}

bool FingerprintsAhead::ReadNext() {
    const auto index = next_++;
    if (index >= named_.count) return false;
    read_[index] = files_.FingerprintFile(named_.path(index));
    isRead_[index] = true;
    isRead_[index].notify_all();
    return true;
}

} // namespace quillbay
