#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDir>
#include <QProgressBar>

namespace quillbay::test {
namespace {

constexpr auto kYes = QMessageBox::Yes;

class HousekeepingWindow : public SelectorFixture {
protected:
    HousekeepingWindow() {
        Write("program/mods/Alpha/odf/ships/a.odf", "a");
        Write("program/mods/Alpha/Addon/X/Backup/odf/ships/a.odf", "game's own");
        Write("program/mods/Bravo/b.txt", "b");
    }
    QDir ModsFolder() const { return QDir(Path("program/mods")); }
};

TEST_F(HousekeepingWindow, RemovesTheModItAskedAbout) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(kYes).Then(kYes);
    files.onChange = [this] { EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isVisible()); };
    QAction& remove = Item("menuModCurrentModRemoveMod");
    Mods().setCurrentRow(1);
    remove.trigger();
    EXPECT_TRUE(Exists("program/mods/Alpha/Addon/X/Backup/odf/ships/a.odf"));
    remove.trigger();
    EXPECT_FALSE(Exists("program/mods/Alpha/Addon/X"));
    EXPECT_EQ(Rows(), (QStringList{"Alpha", "Bravo"}));
    Mods().setCurrentRow(0);
    remove.trigger();
    EXPECT_EQ(Rows(), QStringList{"Bravo"});
    EXPECT_TRUE(remove.isEnabled());
    ASSERT_EQ(boxes.Seen().size(), 3U);
    const SeenBox& addon = boxes.Seen()[1];
    EXPECT_EQ(addon.text, "Are you sure you want to remove the     X mod from your hard drive?");
    EXPECT_EQ(addon.title, "Remove     X mod?");
    EXPECT_EQ(addon.icon, QMessageBox::Question);
    EXPECT_TRUE(addon.informative.contains("Backup"));
    EXPECT_EQ(boxes.Seen()[2].informative, "");
}

TEST_F(HousekeepingWindow, AModThatVanishesWhileAskedAboutIsNotReplacedByAnother) {
    ASSERT_TRUE(Start());
    const auto vanish = [this](QMessageBox&) {
        ModsFolder().rename("Bravo", "bravo");
        Tick();
    };
    for (const char* item :
         {"menuModCurrentModRemoveMod", "menuModCurrentModSubfolders", "menuModCurrentModRemoveSubfolders"}) {
        MakeFolder("program/mods/bravo/odf");
        ModsFolder().rename("bravo", "Bravo");
        Tick();
        ASSERT_TRUE(window->SelectMod({"Bravo"}));
        AnswerBoxes boxes;
        boxes.Then(kYes, vanish);
        Item(item).trigger();
        EXPECT_EQ(boxes.Seen().size(), 1U);
        EXPECT_EQ(QDir(Path("program/mods/bravo")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                  (QStringList{"b.txt", "odf"}));
        EXPECT_TRUE(Exists("program/mods/Alpha/odf/ships/a.odf"));
        EXPECT_TRUE(Mods().isEnabled());
    }
}

TEST_F(HousekeepingWindow, MakesNewFolders) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.ThenType("").ThenType("ALPHA").Then(QMessageBox::Ok).ThenType("nul").Then(QMessageBox::Ok);
    boxes.ThenType("a?b").Then(QMessageBox::Ok).ThenType("New & mod");
    for (int times = 0; times < 5; ++times)
        Item("menuModMakeNewFolder").trigger();
    const auto& seen = boxes.Seen();
    ASSERT_EQ(seen.size(), 8U);
    EXPECT_EQ(seen[0].title, "Make new folder");
    EXPECT_EQ(seen[0].text, "Please enter the name of the folder.");
    EXPECT_EQ(seen[2].text, "Folder already exists.");
    EXPECT_EQ(seen[2].title, "Quillbay");
    EXPECT_EQ(seen[4].text, "Invalid name.");
    EXPECT_EQ(seen[6].title, "Error!");
    EXPECT_EQ(seen[6].text, "An error has occurred. It is possible that you have entered invalid characters. "
                            "Please enter a different name.");
    EXPECT_EQ(SelectedText(), "New & mod");

    boxes.Then(kYes);
    Item("menuModCurrentModSubfolders").trigger();
    EXPECT_EQ(boxes.Seen()[8].text, "Are you sure you want to make these folders?");
    EXPECT_EQ(boxes.Seen()[8].title, "Make subfolders?");
    EXPECT_TRUE(Exists("program/mods/New & mod/odf/weapons/Pulse"));
    EXPECT_EQ(window->focusWidget(), &Mods());
    Write("program/mods/New & mod/odf/ships/own.odf", "own");
    boxes.Then(kYes);
    Item("menuModCurrentModRemoveSubfolders").trigger();
    EXPECT_EQ(boxes.Seen()[9].text, "Are you sure you want to remove these folders?");
    EXPECT_EQ(boxes.Seen()[9].title, "Delete subfolders?");
    EXPECT_EQ(QDir(Path("program/mods/New & mod")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"odf"});
    EXPECT_EQ(Read("program/mods/New & mod/odf/ships/own.odf"), "own");
}

} // namespace
} // namespace quillbay::test
