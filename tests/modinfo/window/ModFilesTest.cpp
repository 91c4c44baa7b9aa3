#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QtTest>
#include <QtWidgets>

namespace quillbay::test {
namespace {

using ModFiles = SelectorFixture;

TEST_F(ModFiles, TheCompatibilityCheckerListsCommonFilesOrSaysWhyNot) {
    for (const char* file :
         {"Alpha/odf/a", "Alpha/Tempest2.exe", "Alpha/Addon/Extra/odf/a", "Alpha/Addon/Extra/ModInfo.txt",
          "Beta/Addon/Extra/odf/a", "Beta/ModInfo.txt", "Beta/odf/x"})
        Write(QStringLiteral("program/mods/") + file, {});
    for (int i = 2; i < 150; ++i)
        Write(QStringLiteral("program/mods/Alpha/odf/%1").arg(i), {});
    ASSERT_TRUE(Start());
    QWidget& opened = OpenWindow("menuModCompatablility", "frmCompatability");
    auto& box = Control<QListWidget>(opened, "lstBox1");
    auto& second = Control<QListWidget>(opened, "lstBox2");
    const auto& result = Control<QPlainTextEdit>(opened, "lstIncompatable");
    EXPECT_EQ(box.selectedItems().value(0)->text(), SelectedText());
    const auto select = [](QListWidget& list, const QString& path) {
        const auto found =
            list.model()->match(list.model()->index(0, 0), Qt::UserRole, path, 1, Qt::MatchExactly);
        list.setCurrentRow(path == "game" ? 0 : found.value(0).row());
    };
    /// The list for these mods, or the box that came instead; an empty path selects none.
    const auto check = [&](const QString& firstPath, const QString& secondPath) {
        AnswerBoxes boxes;
        select(box, firstPath);
        select(second, secondPath);
        box.setFocus();
        QTest::keyClick(&second, Qt::Key_Return);
        EXPECT_TRUE(WaitFor([&] { return result.isReadOnly(); }));
        if (boxes.Seen().empty()) return result.toPlainText();
        EXPECT_EQ(opened.focusWidget(), &box) << qPrintable(boxes.Seen()[0].text);
        EXPECT_EQ(result.toPlainText(), "") << qPrintable(boxes.Seen()[0].text);
        return boxes.Seen()[0].title + ": " + boxes.Seen()[0].text;
    };

    int shortened = 0; ///< the height of the list beside the progress bar
    auto& bar = Control<QProgressBar>(opened, "pgbProgress");
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&] { shortened = box.height(); });
    EXPECT_EQ(check("", ""), "Select two mods: Please select two mods.");
    EXPECT_EQ(check("", "Alpha"), "Select a mod: Please select a mod in the first box.");
    EXPECT_EQ(check("Alpha", ""), "Select a mod: Please select a mod in the second box.");
    const QString extra = "Alpha\\Addon\\Extra";
    EXPECT_EQ(check(extra, "Beta\\Addon\\Extra"), "Same mod: Please select two different mods.");
    EXPECT_EQ(check(extra, "Alpha"), "odf\\a");
    EXPECT_EQ(check(extra, "Beta"), "(Mods are compatable)");
    EXPECT_EQ(check("Alpha", "game"), "Tempest2.exe");
    EXPECT_EQ(shortened, 0) << "not for 150 files";
    Write("program/mods/Alpha/odf/x", {});
    EXPECT_EQ(check("Alpha", "Beta"), "odf\\x");
    EXPECT_EQ(box.height(), shortened + bar.height());
    ASSERT_TRUE(QFile::rename(Path("program/mods/Beta"), Path("program/Beta")));
    EXPECT_TRUE(check("Alpha", "Beta").startsWith("Error!: Error: "));
    EXPECT_TRUE(box.isEnabled() && Control<QWidget>(opened, "cmdCheck").isEnabled() && !bar.isVisible());
}

TEST_F(ModFiles, TechTreesAreFoundInAnyLetterCaseAndOfTheRightAddon) {
    ASSERT_TRUE(Start());
    QWidget& opened = OpenWindow("menuModTechTree", "frmTechTree");
    auto& list = Control<QListWidget>(opened, "lstMods");
    const auto& unavailable = Control<QLabel>(opened, "lblUnavailableList");
    EXPECT_EQ(list.item(0)->text(), "(No mods found.)");
    EXPECT_EQ(unavailable.text(), "Standard Tech\r\nNo Super Weapons\r\nNo Science Ships\r\n"
                                  "No Special Weapons\r\nEarly Upgrades\r\nFree Tech\r\n");
    opened.close();
    EXPECT_TRUE(WaitFor([&] { return !Item("menuModTechTree").isChecked(); }));

    for (const char* file : {"A/nosci.tt", "A/Addon/Same/techtree/nosci.tt", "B/TechTree/TECH1.TT",
                             "B/TechTree/freetech.tt", "B/Addon/Same/techtree/fulltech.tt"})
        Write(QStringLiteral("program/mods/") + file, {});
    MakeFolder("program/mods/B/Addon/Same/techtree/tech1.tt"); // no file
    Tick();
    OpenWindow("menuModTechTree", "frmTechTree");
    ASSERT_EQ(list.count(), 4);
    EXPECT_TRUE(list.item(0)->isSelected());
    int row = 0;
    for (const QString available :
         {"", "No Science Ships\r\n", "Standard Tech\r\nFree Tech\r\n", "Free Tech\r\n"}) {
        EXPECT_EQ(list.item(row)->text(), Rows().at(row));
        EXPECT_EQ(Control<QLabel>(opened, "lblAvailableList").text(), available) << row;
        EXPECT_EQ(unavailable.text().count('\n'), 6 - available.count('\n')) << row;
        list.setCurrentRow(++row);
    }
    list.setCurrentRow(3);
    ASSERT_TRUE(QFile::remove(Path("program/mods/B/Addon/Same/techtree/fulltech.tt")));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(3)).center());
    EXPECT_EQ(Control<QLabel>(opened, "lblAvailableList").text(), "") << "a click on the row looks again";
}

} // namespace
} // namespace quillbay::test
