#include "catalogue/CatalogueTime.h"
#include "catalogue/LooseFileSorter.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <ctime>

namespace quillbay::test {
namespace {

class PosixLooseFilesTest : public DiskTest {};

TEST_F(PosixLooseFilesTest, NoLinkLetsAFileBeLost) {
    const struct {
        const char *link, *target; ///< in the mod
        const char* file;
        const char* after; ///< what became of the mod
        bool isIntoGame, isBack;
    } mods[] = {
        {"Sod", ".", "M/a.sod=mod", "M/Sod->. mods/M/a.sod=mod", false, true},
        {"Sod", "../M", "M/a.sod=mod", "M/Sod->../M mods/M/a.sod=mod", false, true},
        {"Sod", "../../game/Sod", "M/a.sod=mod", "M/Sod->../../game/Sod mods/M/a.sod=mod", true, false},
        {"a.sod", "Sod/a.sod", "M/Sod/a.sod=old", "M/Sod/ mods/M/Sod/a.sod=old mods/M/a.sod->Sod/a.sod",
         false, false},
        {"Sod/a.sod", "../a.sod", "M/a.sod=mod", "M/Sod/ mods/M/Sod/a.sod=mod", false, false}};
    for (const auto& mod : mods) {
        SCOPED_TRACE(mod.after);
        const std::string folder = temp_ / "mods\\M";
        temp_.Put(std::string("game/Sod/a.sod=game mods/") + mod.file);
        const auto link = DiskPath(folder) / mod.link;
        std::filesystem::create_directories(link.parent_path());
        std::filesystem::create_symlink(mod.target, link);
        const auto plan = PlanSorting(*disk_, ListLooseFiles(*disk_, folder), ~TypeChecks(), temp_ / "game");
        const auto result = RunSorting(*disk_, plan);
        EXPECT_EQ(!plan.wayIntoGame.empty(), mod.isIntoGame);
        EXPECT_EQ(!result.leadsBack.empty(), mod.isBack);
        EXPECT_EQ(temp_.Contents(),
                  std::string("game/ game/Sod/ game/Sod/a.sod=game mods/ mods/M/ mods/") + mod.after);
        std::filesystem::remove_all(DiskPath(folder));
    }
    temp_.Put("mods/M/bzn/a.bzn=0 mods/M/a.Bzn=1 mods/M/A.BZN=2");
    const auto loose = ListLooseFiles(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(RunSorting(*disk_, PlanSorting(*disk_, loose, ~TypeChecks(), "")).notMoved.size(), 1U);
    EXPECT_EQ(temp_.Entries().size(), 8U) << "neither spelling has replaced the other";
}

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
        const ScopedVariable here("TZ", zone);
        ::tzset();
        const LocalTime time = CatalogueTime(FileTime(std::chrono::seconds(seconds)));
        EXPECT_EQ(FormatCatalogueTime(time), text) << zone << ' ' << seconds;
        EXPECT_EQ(ParseCatalogueTime(text), time) << text;
    }
    ::tzset();
}

} // namespace
} // namespace quillbay::test
