#include "library/NewModFolder.h"

#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

class NewModFolderTest : public DiskTest {};

TEST_F(NewModFolderTest, TakesOnlyNamesThatEverySystemKeeps) {
    using enum NewFolderOutcome;
    PutFolder(temp_ / "mods\\Alpha");
    PutFile(temp_ / "mods\\note.txt", "x");
    const std::pair<std::string, NewFolderOutcome> names[] = {
        {"Alpha", Exists},
        {"aLPHA", Exists},
        {"NOTE.TXT", Exists},
        {"a\\b", InvalidCharacter},
        {"../x", InvalidCharacter},
        {"C:", InvalidCharacter},
        {"a?", InvalidCharacter},
        {"a\tb", InvalidCharacter},
        {"\x7F", InvalidCharacter},
        {"..", InvalidName},
        {".", InvalidName},
        {"a.", InvalidName},
        {"a ", InvalidName},
        {" ", InvalidName},
        {"    a", InvalidName},
        {"nul", InvalidName},
        {"Com1.txt", InvalidName},
        {"LPT\u00b2", InvalidName},
        {"aux .x", InvalidName},
        {"~quillbay.x", InvalidName},
        {"(No mods found.)", InvalidName},
        {"", InvalidName},
        {std::string(300, 'x'), Failed},
    };
    for (const auto& [name, outcome] : names)
        EXPECT_EQ(MakeModFolder(*disk_, temp_ / "mods", name), outcome) << name;
    EXPECT_EQ(disk_->List(temp_.Path(), Detail::Names)->size(), 1U);
    EXPECT_EQ(disk_->List(temp_ / "mods", Detail::Names)->size(), 2U);

    for (const char* name : {"A & b 100%", "COM", "com10", "Null", ".hidden", "   x", "\u0436"})
        EXPECT_EQ(MakeModFolder(*disk_, temp_ / "mods", name), Made) << name;
    EXPECT_EQ(disk_->List(temp_ / "mods", Detail::Names)->size(), 2U + 7U);
}

} // namespace
} // namespace quillbay::test
