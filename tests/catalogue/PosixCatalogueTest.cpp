#include "catalogue/LooseFileSorter.h"
#include "support/TempFolder.h"

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

} // namespace
} // namespace quillbay::test
