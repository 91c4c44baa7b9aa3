#include "support/InstallLab.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace quillbay {
namespace {

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
