#include "library/NewModFolder.h"

#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

class NewModFolderTest : public DiskTest {};

TEST_F(NewModFolderTest, TakesOnlyNamesThatEverySystemKeeps) {
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

} // namespace
} // namespace quillbay::test
