#pragma once

#include "platform/FileSystem.h"

#include <chrono>

namespace quillbay {

/// What a clock on the user's wall shows, to the second.
using LocalTime = std::chrono::local_seconds;

/// The local time of `time` by the rules of the user's time zone in force at that moment (daylight saving
/// time included), whatever is in force today. UTC for times that the system cannot convert.
LocalTime ToLocalTime(FileTime time);

} // namespace quillbay
