#include "library/InstalledMods.h"
#include "library/ModHousekeeping.h"
#include "library/ModJob.h"
#include "library/ModRows.h"
#include "support/ListingFileSystem.h"
#include "support/TempFolder.h"

namespace quillbay::test {
namespace {

class LibraryTest : public DiskTest {};

TEST_F(LibraryTest, ScanListsModsSortedWithTheirAddonsReversed) {
    for (const char* folder :
         {"b", "A\\Addon\\X", "A\\Addon\\Y", "A\\Backup", "C\\aDDon\\Z\\backup", "~quillbay.new",
          "A\\Addon\\~quillbay.bak", "    blank\\Addon\\Hidden", ".dot", "(No mods found.)"})
        PutFolder(temp_ / folder);
    for (const char* file : {"readme.txt", "A\\Addon\\file.txt", "b\\Addon"})
        PutFile(temp_ / file, "no mod, no addon");
    const ListingFileSystem files(*disk_);
    const std::vector<ModRow> rows = ScanModLibrary(files, temp_.Path());
    const std::vector<ModRow> expected = {{"    blank", {}},
                                          {"(No mods found.)", {}},
                                          {".dot", {".dot"}},
                                          {"A", {"A"}, true},
                                          {"    Y", {"A\\Addon\\Y"}},
                                          {"    X", {"A\\Addon\\X"}},
                                          {"b", {"b"}},
                                          {"C", {"C"}},
                                          {"    Z", {"C\\Addon\\Z"}, true}};
    EXPECT_EQ(rows, expected);
    for (const auto& [folder, times] : files.listed)
        EXPECT_EQ(times, 1) << folder;
}

TEST_F(LibraryTest, NewModsTakeOnlyNamesThatEverySystemKeeps) {
    using enum NewFolderOutcome;
    PutFolder(temp_ / "mods\\Alpha");
    PutFile(temp_ / "mods\\note.txt", "x");
    const std::pair<NewFolderOutcome, std::vector<std::string>> names[] = {
        {Exists, {"Alpha", "aLPHA", "NOTE.TXT"}},
        {InvalidCharacter, {"a\\b", "../x", "C:", "a?", "a\tb", "\x7F"}},
        {InvalidName, {"", ".", "..", "a.", "a ", " ", "    a", "(No mods found.)", "~quillbay.x"}},
        {InvalidName, {"nul", "Com1.txt", "LPT\u00b2", "aux .x"}},
        {Failed, {std::string(300, 'x')}},
        {Made, {"A & b 100%", "COM", "com10", "Null", ".hidden", "   x", "\u0436"}},
    };
    for (const auto& [outcome, tried] : names)
        for (const std::string& name : tried)
            EXPECT_EQ(MakeModFolder(*disk_, temp_ / "mods", name), outcome) << name;
    EXPECT_EQ(disk_->List(temp_ / "mods", Detail::Names)->size(), 2U + 7U);
    EXPECT_EQ(disk_->List(temp_.Path(), Detail::Names)->size(), 1U);
}

TEST_F(LibraryTest, AnEmptyModPathNamesNoFolder) {
    PutFolder(temp_ / "Backup");
    EXPECT_EQ((ModJob{"g", "C:\\mods", {}}.FolderInLibrary()), "");
    EXPECT_FALSE(IsInstalled(*disk_, ""));
    EXPECT_TRUE(FilterInstalled(*disk_, temp_.Path(), {{"    none", {}}}).empty());
}

} // namespace
} // namespace quillbay::test
