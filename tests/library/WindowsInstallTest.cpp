#include "platform/PathText.h"
#include "support/ImportPatch.h"
#include "support/InstallLab.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

struct LookUps {
    int install = 0;
    int uninstall = 0;
};

/// Of a mod that replaces so many of the game's files.
LookUps CountLookUps(int files, bool readOnly) {
    InstallLab lab;
    for (int i = 0; i < files; ++i) {
        const auto name = "/odf/ships/" + std::to_string(i) + ".odf";
        lab.Put("game" + name, "game");
        lab.Put("mods/M" + name, "mod");
        if (readOnly) lab.SetReadOnly("game" + name);
    }
    const auto before = lab.State("game");
    LookUps lookUps;
    {
        const LookUpCounter counter;
        EXPECT_EQ(lab.Install("M").installed, std::size_t(files));
        lookUps.install = counter.Count();
    }
    // Later than every clock of a file, so that none is read for having been copied just now.
    const auto backup = Join(lab.Job("M").FolderInLibrary(), kBackupName);
    auto record = *ReadInstallRecord(lab.Files(), backup).ValueOr({});
    record.finished += 1'000'000'000;
    EXPECT_FALSE(lab.Files().WriteFile(Join(backup, kRecordName), ToText(record)));
    const LookUpCounter counter;
    EXPECT_EQ(lab.Uninstall("M").restored, std::size_t(files));
    lookUps.uninstall = counter.Count();
    EXPECT_EQ(Differences(before, lab.State("game")), "");
    return lookUps;
}

TEST(WindowsInstallTest, LooksUpFewPathsForEachFile) {
    for (const auto& [readOnly, install, uninstall] : {std::tuple{false, 7, 4}, {true, 12, 10}}) {
        const auto few = CountLookUps(10, readOnly);
        const auto many = CountLookUps(30, readOnly);
        EXPECT_LE(many.install - few.install, 20 * install) << "for each of 20 files more";
        EXPECT_LE(many.uninstall - few.uninstall, 20 * uninstall);
        EXPECT_GT(many.uninstall - few.uninstall, 0) << "counts at all";
    }
}

} // namespace
} // namespace quillbay::test
