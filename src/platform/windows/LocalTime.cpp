#include "platform/LocalTime.h"

#include <windows.h>

namespace quillbay {

namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
/// From 1601, where the system's times begin, to 1970.
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
constexpr std::int64_t kMaxSeconds = INT64_MAX / kTicksPerSecond;

LocalTime ToSeconds(const SYSTEMTIME& civil) {
    using namespace std::chrono;
    const year_month_day day{year(civil.wYear), month(civil.wMonth), std::chrono::day(civil.wDay)};
    return local_days(day) + hours(civil.wHour) + minutes(civil.wMinute) + seconds(civil.wSecond);
}

bool ConvertByRulesOf(WORD year, const SYSTEMTIME& utc, SYSTEMTIME& local) {
    TIME_ZONE_INFORMATION rules{};
    return GetTimeZoneInformationForYear(year, nullptr, &rules) &&
           SystemTimeToTzSpecificLocalTime(&rules, &utc, &local);
}

} // namespace

LocalTime ToLocalTime(FileTime time) {
    const std::chrono::seconds sinceEpoch = time.time_since_epoch();
    const LocalTime unconverted(sinceEpoch);
    if (sinceEpoch.count() < -kSecondsTo1970 || sinceEpoch.count() > kMaxSeconds - kSecondsTo1970)
        return unconverted;
    ULARGE_INTEGER ticks{};
    ticks.QuadPart = static_cast<std::uint64_t>((sinceEpoch.count() + kSecondsTo1970) * kTicksPerSecond);
    const FILETIME stamp{ticks.LowPart, ticks.HighPart};
    SYSTEMTIME utc{};
    SYSTEMTIME local{};
    if (!FileTimeToSystemTime(&stamp, &utc) || !ConvertByRulesOf(utc.wYear, utc, local)) return unconverted;
    // Around New Year the local year may be another one, with rules of its own.
    if (local.wYear != utc.wYear && !ConvertByRulesOf(local.wYear, utc, local)) return unconverted;
    return ToSeconds(local);
}

} // namespace quillbay
