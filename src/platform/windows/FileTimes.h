#pragma once

#include "platform/FileSystem.h"

#include <cstdint>
#include <optional>
#include <windows.h>

namespace quillbay {

inline constexpr std::int64_t kTicksPerSecond = 10'000'000;
inline constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;

inline FileTime FromFileTime(const FILETIME& time) {
    const auto ticks = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    return FileTime(
        std::chrono::seconds(static_cast<std::int64_t>(ticks / kTicksPerSecond) - kSecondsFrom1601To1970));
}

/// Nothing for a time that the system cannot keep.
inline std::optional<FILETIME> ToFileTime(FileTime time) {
    const auto seconds = std::int64_t{time.time_since_epoch().count()} + kSecondsFrom1601To1970;
    if (seconds <= 0 || seconds > INT64_MAX / kTicksPerSecond) return std::nullopt;
    const auto ticks = static_cast<std::uint64_t>(seconds) * kTicksPerSecond;
    return FILETIME{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

} // namespace quillbay
