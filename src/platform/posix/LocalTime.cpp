#include "platform/LocalTime.h"

#include <ctime>

namespace quillbay {

LocalTime ToLocalTime(FileTime time) {
    const std::chrono::seconds sinceEpoch = time.time_since_epoch();
    const auto seconds = static_cast<std::time_t>(sinceEpoch.count());
    std::tm civil{};
    if (!::localtime_r(&seconds, &civil)) return LocalTime(sinceEpoch);
    return LocalTime(sinceEpoch + std::chrono::seconds(civil.tm_gmtoff));
}

} // namespace quillbay
