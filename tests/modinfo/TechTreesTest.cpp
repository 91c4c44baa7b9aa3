#include "modinfo/TechTrees.h"

#include "support/DiskTest.h"
#include "support/ListingFileSystem.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

using Names = std::vector<std::string_view>;

class TechTreesTest : public DiskTest {};

TEST_F(TechTreesTest, AreKnownByTheirFilesInAnyLetterCase) {
    PutFile(temp_ / "mods\\A\\TechTree\\TECH1.TT", "");
    PutFile(temp_ / "mods\\A\\TechTree\\freetech.tt", "");
    PutFile(temp_ / "mods\\A\\nosci.tt", "");
    PutFile(temp_ / "mods\\A\\Addon\\X\\techtree\\FullTech.tt", "");
    PutFolder(temp_ / "mods\\A\\Addon\\X\\techtree\\tech1.tt");
    PutFile(temp_ / "mods\\techtree\\tech1.tt", ""); // a mod of that name is no mod's folder of that name
    const Names all = {"Standard Tech",      "No Super Weapons", "No Science Ships",
                       "No Special Weapons", "Early Upgrades",   "Free Tech"};
    const struct {
        const char* mod;
        Names available;
    } cases[] = {
        {"A", {"Standard Tech", "Free Tech"}}, {"A\\Addon\\X", {"Free Tech"}}, {"Gone", {}}, {"", {}}};
    for (const auto& [mod, available] : cases) {
        const ListingFileSystem files(*disk_);
        const TechTrees found = FindTechTrees(files, temp_ / "mods", {mod});
        EXPECT_EQ(found.available, available) << mod;
        Names rest = all;
        std::erase_if(rest, [&](auto name) { return std::ranges::count(available, name) > 0; });
        EXPECT_EQ(found.unavailable, rest) << mod;
        EXPECT_LE(files.listed.size(), 1U) << mod;
    }
}

} // namespace
} // namespace quillbay::test
