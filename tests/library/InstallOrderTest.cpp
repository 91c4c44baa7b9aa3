#include "support/InstallLab.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace quillbay {
namespace {

TEST(InstallOrderTest, ThreeModsThatShareFilesGoInAndOutInAnyOrder) {
    const std::vector<std::string> mods = {"One", "Two", "One\\Addon\\Extra"};
    std::vector<std::size_t> in = {0, 1, 2};
    do {
        std::vector<std::size_t> out = {0, 1, 2};
        do {
            InstallLab lab;
            lab.Put("game/odf/ships/a.odf", "game a");
            lab.Put("game/odf/ships/b.odf", "game b");
            lab.Put("game/odf/ships/other.odf", "game other");
            for (const std::string folder : {"One", "Two", "One/Addon/Extra"}) {
                lab.Put("mods/" + folder + "/odf/ships/a.odf", folder + " a");
                lab.Put("mods/" + folder + "/odf/ships/added.odf", folder + " added");
                lab.Put("mods/" + folder + "/odf/ships/alike.odf", "alike in all three");
            }
            lab.Put("mods/Two/odf/ships/b.odf", "game b");
            lab.Put("mods/One/Addon/Extra/odf/ships/b.odf", "extra b");
            const auto before = lab.State("game");
            for (const auto i : in)
                ASSERT_EQ(lab.Install(mods[i]).outcome, InstallOutcome::Done);
            for (const auto i : out)
                ASSERT_FALSE(lab.Uninstall(mods[i]).BackupStays());
            ASSERT_EQ(Differences(before, lab.State("game")), "")
                << "in " << in[0] << in[1] << in[2] << ", out " << out[0] << out[1] << out[2];
        } while (std::ranges::next_permutation(out).found);
    } while (std::ranges::next_permutation(in).found);
}

TEST(InstallOrderTest, RandomSequencesEndWhereTheyBegan) {
    std::mt19937 random(20);
    const auto pick = [&](std::size_t count) { return std::size_t(random()) % count; };
    const std::vector<std::string> contents = {"a", "b", "c"};
    const std::vector<std::string> mods = {"One", "Two", "One\\Addon\\Extra", "Three"};
    const std::vector<std::string> folders = {"One", "Two", "One/Addon/Extra", "Three"};
    for (int sequence = 0; sequence < 250 / QUILLBAY_SWEEP_STRIDE; ++sequence) {
        InstallLab lab;
        const auto modCount = 2 + pick(3);
        for (const std::string file : {"/odf/ships/x.odf", "/y.txt", "/Sod/z.sod"}) {
            if (pick(3) > 0) lab.Put("game" + file, contents[pick(3)]);
            for (std::size_t mod = 0; mod < modCount; ++mod)
                if (pick(4) > 0) lab.Put("mods/" + folders[mod] + file, contents[pick(3)]);
        }
        for (std::size_t mod = 0; mod < modCount; ++mod)
            lab.Put("mods/" + folders[mod] + "/ModInfo.txt", "");
        const auto before = lab.State("game");

        std::string story;
        const auto run = [&](std::size_t mod, bool install) {
            story += (install ? " +" : " -") + mods[mod];
            if (install)
                ASSERT_EQ(lab.Install(mods[mod]).outcome, InstallOutcome::Done) << story;
            else
                ASSERT_FALSE(lab.Uninstall(mods[mod]).BackupStays()) << story;
        };
        for (auto steps = 3 + pick(8); steps > 0; --steps) {
            const auto mod = pick(modCount);
            run(mod, !lab.Installed(mods[mod]) || pick(3) == 0);
        }
        std::vector<std::size_t> rest(modCount);
        for (std::size_t i = 0; i < modCount; ++i)
            rest[i] = i;
        std::ranges::shuffle(rest, random);
        for (const auto mod : rest)
            if (lab.Installed(mods[mod])) run(mod, false);
        ASSERT_EQ(Differences(before, lab.State("game")), "") << "sequence " << sequence << ":" << story;
    }
}

} // namespace
} // namespace quillbay
