#include "catalogue/LooseFileSorter.h"
#include "support/DiskTest.h"

#include <sstream>

namespace quillbay::test {
namespace {

/// Sorts a mod with links; what became of it, without the game.
struct LinkedMod {
    const char* links; ///< "name->target" in the mod
    const char* files;
    const char* after;
    bool isIntoGame;
    bool isBack;
};

class PosixLooseFilesTest : public DiskTest, public testing::WithParamInterface<LinkedMod> {};

TEST_P(PosixLooseFilesTest, NoLinkLetsAFileBeLost) {
    const auto& mod = GetParam();
    temp_.Put("game/Sod/a.sod=game mods/M/");
    const std::string folder = temp_ / "mods\\M";
    std::istringstream files(mod.files);
    for (std::string file; files >> file;)
        temp_.Put("mods/M/" + file);
    const std::string link = mod.links;
    const auto arrow = link.find("->");
    std::filesystem::create_symlink(link.substr(arrow + 2), DiskPath(folder + '\\' + link.substr(0, arrow)));

    const auto plan = PlanSorting(*disk_, ListLooseFiles(*disk_, folder), ~TypeChecks(), temp_ / "game");
    const auto result = RunSorting(*disk_, plan);
    EXPECT_EQ(!plan.wayIntoGame.empty(), mod.isIntoGame);
    EXPECT_EQ(!result.leadsBack.empty(), mod.isBack);
    std::string contents = temp_.Contents();
    const std::string rest = "game/ game/Sod/ game/Sod/a.sod=game mods/ mods/M/ ";
    ASSERT_TRUE(contents.starts_with(rest)) << contents;
    contents.erase(0, rest.size());
    for (std::size_t at = 0; (at = contents.find("mods/M/", at)) != std::string::npos;)
        contents.erase(at, 7);
    EXPECT_EQ(contents, mod.after);
}

INSTANTIATE_TEST_SUITE_P(
    Links, PosixLooseFilesTest,
    testing::Values(
        LinkedMod{"Sod->.", "a.sod=mod", "Sod->. a.sod=mod", false, true},
        LinkedMod{"Sod->../M", "a.sod=mod", "Sod->../M a.sod=mod", false, true},
        LinkedMod{"Sod->../../game/Sod", "a.sod=mod", "Sod->../../game/Sod a.sod=mod", true, false},
        LinkedMod{"a.sod->Sod/a.sod", "Sod/a.sod=old", "Sod/ Sod/a.sod=old a.sod->Sod/a.sod", false, false},
        LinkedMod{"Sod/a.sod->../a.sod", "Sod/ a.sod=mod", "Sod/ Sod/a.sod=mod", false, false}));

} // namespace
} // namespace quillbay::test
