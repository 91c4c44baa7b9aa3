#include "catalogue/CatalogueTime.h"
#include "support/ScopedVariable.h"

#include <ctime>
#include <gtest/gtest.h>

namespace quillbay {
namespace {

// The rules are written out, so that no table of zones is needed.
constexpr char kBerlin[] = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr char kLordHowe[] = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0"; // its change is half an hour

TEST(PosixCatalogueTime, FollowsTheRulesInForceAtTheFilesOwnDate) {
    // An hour that is missing, one that comes twice, half an hour of both; then what lies far off.
    const std::tuple<const char*, std::int64_t, std::string_view> cases[] = {
        {kBerlin, 1'711'846'800, "3/31/2024 3:00:00 AM"},
        {kBerlin, 1'729'988'999, "10/27/2024 2:29:59 AM"},
        {kBerlin, 1'729'992'599, "10/27/2024 2:29:59 AM"},
        {kLordHowe, 1'728'142'200, "10/6/2024 2:30:00 AM"},
        {kLordHowe, 1'712'415'600, "4/7/2024 1:30:00 AM"},
        {kLordHowe, 1'712'413'800, "4/7/2024 1:30:00 AM"},
        {"EST5", -1, "12/31/1969 6:59:59 PM"},
        {"UTC0", 45'296, "1/1/1970 12:34:56 PM"},
        {"UTC0", -99'999'999'999, "1/1/100 12:00:00 AM"},
        {"UTC0", 999'999'999'999, "12/31/9999 11:59:59 PM"}};
    for (const auto& [zone, seconds, text] : cases) {
        const test::ScopedVariable here("TZ", zone);
        ::tzset();
        const LocalTime time = CatalogueTime(FileTime(std::chrono::seconds(seconds)));
        EXPECT_EQ(FormatCatalogueTime(time), text) << zone << ' ' << seconds;
        EXPECT_EQ(ParseCatalogueTime(text), time) << text;
    }
    ::tzset();
}

} // namespace
} // namespace quillbay
