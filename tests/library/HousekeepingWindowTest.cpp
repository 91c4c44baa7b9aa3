#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDir>
#include <QProgressBar>

namespace quillbay::test {
namespace {

constexpr auto kYes = QMessageBox::Yes;

class HousekeepingWindow : public SelectorFixture {};

TEST_F(HousekeepingWindow, RemovesTheModItAskedAbout) {
    Write("program/mods/Alpha/odf/ships/a.odf", "a");
    Write("program/mods/Alpha/Addon/X/Backup/odf/ships/a.odf", "game's own");
    Write("program/mods/Bravo/b.txt", "b");
    ASSERT_TRUE(Start());
    files.onChange = [this] { EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isVisible()); };
    AnswerBoxes boxes;
    const auto remove = [&](int row) {
        Mods().setCurrentRow(row);
        Item("menuModCurrentModRemoveMod").trigger();
    };
    window->GameDirectory = Path("program/mods/Alpha/odf").toStdString();
    remove(0);
    window->GameDirectory = Path("game").toStdString();
    boxes.Then(QMessageBox::No).Then(kYes).Then(kYes, [this](QMessageBox&) {
        Respell("program/mods/Bravo", "program/mods/bravo"); // which is another mod
        Tick();
    });
    remove(0);
    remove(1);
    EXPECT_EQ(Rows(), (QStringList{"Alpha", "Bravo"}));
    remove(1);
    EXPECT_EQ(Read("program/mods/bravo/b.txt") + Read("program/mods/Alpha/odf/ships/a.odf"), "ba");
    ASSERT_EQ(boxes.Seen().size(), 4U);
    EXPECT_EQ(boxes.Seen()[0].title, "Error!");
    EXPECT_TRUE(boxes.Seen()[1].informative.contains("Backup"));
    EXPECT_EQ(boxes.Seen()[2].text, "Are you sure you want to remove the     X mod from your hard drive?");
    EXPECT_EQ(boxes.Seen()[2].title, "Remove     X mod?");
    EXPECT_EQ(boxes.Seen()[3].informative, "");
}

TEST_F(HousekeepingWindow, MakesNewModsAndTheirFolders) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.ThenType("").ThenType("nul").Then(QMessageBox::Ok).ThenType("a?b").Then(QMessageBox::Ok);
    boxes.ThenType("New & mod").ThenType("NEW & MOD").Then(QMessageBox::Ok).Then(kYes).Then(kYes);
    for (int times = 0; times < 5; ++times)
        Item("menuModMakeNewFolder").trigger();
    EXPECT_EQ(SelectedText(), "New & mod");
    Item("menuModCurrentModSubfolders").trigger();
    EXPECT_TRUE(Exists("program/mods/New & mod/odf/weapons/Pulse"));
    Write("program/mods/New & mod/odf/ships/own.odf", "own");
    Item("menuModCurrentModRemoveSubfolders").trigger();
    EXPECT_EQ(QDir(Path("program/mods/New & mod")).entryList({"*"}, QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList{"odf"});
    EXPECT_EQ(Read("program/mods/New & mod/odf/ships/own.odf"), "own");
    QStringList said;
    for (const SeenBox& box : boxes.Seen())
        if (box.title != "Make new folder") said << box.title + ": " + box.text;
    EXPECT_EQ(said,
              (QStringList{"Quillbay: Invalid name.",
                           "Error!: An error has occurred. It is possible that you have entered invalid "
                           "characters. Please enter a different name.",
                           "Quillbay: Folder already exists.",
                           "Make subfolders?: Are you sure you want to make these folders?",
                           "Delete subfolders?: Are you sure you want to remove these folders?"}));
    EXPECT_EQ(boxes.Seen()[0].text, "Please enter the name of the folder.");
}

} // namespace
} // namespace quillbay::test
