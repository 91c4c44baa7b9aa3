#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QLabel>

namespace quillbay {
namespace {

class TechTreeWindow : public test::SelectorFixture {
protected:
    QWidget& Open() { return OpenWindow("menuModTechTree", "frmTechTree"); }
};

TEST_F(TechTreeWindow, TellsEquallyNamedAddonsApartAndFindsFilesInAnyLetterCase) {
    for (const char* file : {"A/nosci.tt", "A/Addon/Same/techtree/nosci.tt", "B/TechTree/TECH1.TT",
                             "B/TechTree/freetech.tt", "B/Addon/Same/techtree/fulltech.tt"})
        Write(QStringLiteral("program/mods/") + file, {});
    MakeFolder("program/mods/B/Addon/Same/techtree/tech1.tt"); // no file
    ASSERT_TRUE(Start());
    QWidget& opened = Open();
    auto& list = Control<QListWidget>(opened, "lstMods");
    const auto& available = Control<QLabel>(opened, "lblAvailableList");
    ASSERT_EQ(list.count(), 4);
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(list.item(row)->text(), Rows().at(row));
    EXPECT_TRUE(list.item(0)->isSelected());
    EXPECT_EQ(available.text(), "");
    list.setCurrentRow(1);
    EXPECT_EQ(available.text(), "No Science Ships\r\n");
    list.setCurrentRow(2);
    EXPECT_EQ(available.text(), "Standard Tech\r\nFree Tech\r\n");
    list.setCurrentRow(3);
    EXPECT_EQ(available.text(), "Free Tech\r\n");
    EXPECT_EQ(
        Control<QLabel>(opened, "lblUnavailableList").text(),
        "Standard Tech\r\nNo Super Weapons\r\nNo Science Ships\r\nNo Special Weapons\r\nEarly Upgrades\r\n");
    opened.close();
    EXPECT_TRUE(test::WaitFor([&] { return !Item("menuModTechTree").isChecked(); }));
}

TEST_F(TechTreeWindow, HasNothingWithoutMods) {
    ASSERT_TRUE(Start());
    QWidget& opened = Open();
    EXPECT_EQ(Control<QListWidget>(opened, "lstMods").item(0)->text(), "(No mods found.)");
    EXPECT_EQ(Control<QLabel>(opened, "lblAvailableList").text(), "");
    EXPECT_EQ(Control<QLabel>(opened, "lblUnavailableList").text().count("\r\n"), 6);
}

} // namespace
} // namespace quillbay
