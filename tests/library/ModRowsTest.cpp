#include "library/ModRows.h"

#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace quillbay {
namespace {

/// Lists every folder sorted by name, on every system, and counts how often each was listed.
class SortedListing : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        ++listed[std::string(folder)];
        auto entries = Base().List(folder, detail);
        if (entries) {
            std::sort(entries->begin(), entries->end(),
                      [](const DirEntry& a, const DirEntry& b) { return a.name < b.name; });
        }
        return entries;
    }

    mutable std::map<std::string, int> listed;
};

ModPath Resolve(const std::vector<std::string>& rows, std::size_t index) {
    return ResolveModPath([&](std::size_t i) { return rows.at(i); }, index);
}

TEST(ResolveModPath, AddonsBelongToTheNearestModAbove) {
    const std::vector<std::string> rows = {"    Lost", "A", "    X", "    Y", "B", "      Z", "    ", ""};
    const std::vector<std::string> paths = {"", "A", "A\\Addon\\X", "A\\Addon\\Y", "B", "B\\Addon\\  Z",
                                            "", ""};
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(Resolve(rows, i).text, paths[i]) << i;
    EXPECT_TRUE(Resolve({"(No mods found.)", "    X"}, 0).Empty());
    EXPECT_TRUE(Resolve({"(No mods found.)", "    X"}, 1).Empty());
    EXPECT_EQ(DisplayName("    X"), "X");
    EXPECT_EQ(DisplayName("   X"), "   X");
}

TEST(ScanModLibrary, ListsModsSortedWithTheirAddonsReversed) {
    TempFolder temp;
    for (const char* folder :
         {"b", "A\\Addon\\X", "A\\Addon\\Y", "A\\Backup", "C\\aDDon\\Z", "~quillbay.new",
          "C\\addon\\~quillbay.bak", "    blank\\Addon\\Hidden", ".dot", "(No mods found.)"}) {
        temp.MakeFolders(folder);
    }
    temp.WriteFile("readme.txt", "no mod");
    temp.WriteFile("A\\Addon\\file.txt", "no addon");
    temp.WriteFile("b\\Addon", "a file");
    const SortedListing files(temp.Files());

    const std::vector<ModRow> rows = ScanModLibrary(files, temp.Path());

    const std::vector<ModRow> expected = {
        {"    blank", {}},          {"(No mods found.)", {}},   {".dot", {".dot"}}, {"A", {"A"}},
        {"    Y", {"A\\Addon\\Y"}}, {"    X", {"A\\Addon\\X"}}, {"b", {"b"}},       {"C", {"C"}},
        {"    Z", {"C\\Addon\\Z"}}};
    ASSERT_EQ(rows, expected);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(ResolveModPath([&](std::size_t at) { return rows.at(at).text; }, i), rows[i].path) << i;
    }
    for (const auto& [folder, times] : files.listed)
        EXPECT_EQ(times, 1) << folder;
}

TEST(ScanModLibrary, ALibraryThatCannotBeListedHasNoRows) {
    TempFolder temp;
    temp.WriteFile("mods", "a file");
    EXPECT_TRUE(ScanModLibrary(temp.Files(), temp.Path("mods")).empty());
    EXPECT_TRUE(ScanModLibrary(temp.Files(), temp.Path("missing")).empty());
}

TEST(PrepareModsFolder, MakesTheFolderOrGivesItItsLowerCaseName) {
    TempFolder temp;
    FileSystem& files = temp.Files();
    EXPECT_TRUE(PrepareModsFolder(files, temp.Path()));
    EXPECT_FALSE(PrepareModsFolder(files, temp.Path()));
    ASSERT_FALSE(files.Rename(temp.Path("mods"), temp.Path("MODS")));
    temp.MakeFolders("MODS\\A");
    EXPECT_FALSE(PrepareModsFolder(files, temp.Path()));
    EXPECT_EQ(files.Stat(temp.Path("mods")).ValueOr({}).name, "mods");
    EXPECT_EQ(ScanModLibrary(files, ModsFolder(temp.Path())).size(), 1U);
}

TEST(PrepareModsFolder, AFileOfThatNameStays) {
    TempFolder temp;
    temp.WriteFile("Mods", "data");
    EXPECT_FALSE(PrepareModsFolder(temp.Files(), temp.Path()));
    EXPECT_EQ(temp.ReadFile("Mods"), "data");
}

} // namespace
} // namespace quillbay
