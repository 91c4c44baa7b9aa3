#pragma once

#include "platform/posix/UniqueFd.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace quillbay {

/// Calls `use(piece)` for the bytes of a regular file, piece by piece, until it answers false. False when
/// the file is larger than `mostBytes`, is no regular one, or cannot be read to its end.
template <typename Use>
bool ReadBounded(const std::string& path, std::size_t mostBytes, Use use) {
    constexpr std::size_t kPiece = std::size_t{128} * 1024;
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info {};
    if (!file || ::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<std::size_t>(info.st_size) > mostBytes) {
        return false;
    }
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    while (true) {
        const auto count = ::read(file.Get(), buffer.get(), kPiece);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        const auto length = static_cast<std::size_t>(count);
        // A file that grows meanwhile does not go on for ever.
        if (length > mostBytes) return false;
        mostBytes -= length;
        if (!use(std::string_view(buffer.get(), length))) return true;
    }
}

} // namespace quillbay
