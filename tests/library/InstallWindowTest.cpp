#include "shell/GameDirectory.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>

namespace quillbay::test {
namespace {

constexpr auto kYes = QMessageBox::Yes;
constexpr auto kNo = QMessageBox::No;

class InstallWindow : public SelectorFixture {
protected:
    InstallWindow() {
        Write("game/odf/ships/a.odf", "game's own");
        Write("program/mods/Alpha/odf/ships/a.odf", "Alpha's");
        Write("program/mods/Alpha/odf/ships/new.odf", "new");
        Write("program/mods/Alpha/odf/ships/newer.odf", "newer");
        Write("program/mods/Alpha/Addon/Maps/bzn/new.bzn", "map");
        Write("program/mods/Bravo/odf/ships/a.odf", "Bravo's");
    }

    /// Everything that a command takes away is back.
    void ExpectIdle() const {
        EXPECT_EQ(Control<QPushButton>("cmdInstallMod").text(), "Install Mod");
        EXPECT_EQ(Control<QPushButton>("cmdUninstallMod").text(), "Uninstall Mod");
        EXPECT_TRUE(Control<QPushButton>("cmdInstallMod").isEnabled());
        for (const char* item : {"menuModInstall", "menuModUninstall", "menuModRefreshModList"})
            EXPECT_TRUE(Item(item).isEnabled()) << item;
        for (const char* menu : {"menuSelector", "menuMod", "menuHelp"})
            EXPECT_TRUE(Control<QMenu>(menu).isEnabled()) << menu;
        EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isHidden());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }

    QLabel& Outcome() const { return Control<QLabel>("lblOutcome"); }
    QStringList captions; ///< of both buttons, as file work saw them
    void WatchWork() {
        const int height = Mods().height();
        files.onChange = [this, height] {
            const QString caption = Control<QPushButton>("cmdInstallMod").text() + "/" +
                                    Control<QPushButton>("cmdUninstallMod").text();
            if (!captions.contains(caption)) captions << caption;
            auto& bar = Control<QProgressBar>("pgbPercent");
            EXPECT_TRUE(bar.isVisible());
            EXPECT_EQ(Mods().height() + bar.height(), height);
            EXPECT_FALSE(Control<QMenu>("menuMod").isEnabled());
        };
    }
};

TEST_F(InstallWindow, GoesInAndOutOfTheGame) {
    ASSERT_TRUE(Start());
    const int listHeight = Mods().height();
    Mods().setCurrentRow(1);
    AnswerBoxes boxes;
    boxes.Then(kYes).Then(kYes).Then(kYes);
    WatchWork();
    const int details = files.treeSizes;
    Control<QPushButton>("cmdInstallMod").click();
    files.onChange = nullptr;
    EXPECT_EQ(files.treeSizes, details + 1);
    EXPECT_EQ(Read("game/bzn/new.bzn"), "map");
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "3");
    EXPECT_TRUE(Control<QPushButton>("cmdUninstallMod").isEnabled());
    ExpectIdle();

    Mods().setCurrentRow(0);
    EXPECT_FALSE(Control<QPushButton>("cmdUninstallMod").isEnabled());
    Item("menuModInstall").trigger();
    EXPECT_EQ(Read("game/odf/ships/a.odf"), "Alpha's");
    EXPECT_EQ(Outcome().text(), "Alpha is installed: 3 files copied, 1 of the game's saved.");

    Write("game/odf/ships/new.odf", "the player's own");
    WatchWork();
    Control<QPushButton>("cmdUninstallMod").click();
    files.onChange = nullptr;
    EXPECT_EQ(Read("game/odf/ships/a.odf"), "game's own");
    EXPECT_EQ(Read("game/odf/ships/new.odf"), "the player's own");
    EXPECT_EQ(Outcome().text(),
              "Alpha is uninstalled: 1 file removed, 1 restored, 1 kept because they are not the mod's.");
    EXPECT_TRUE(Outcome().toolTip().contains("new.odf"));
    EXPECT_FALSE(Exists("program/mods/Alpha/Backup"));
    ExpectIdle();
    EXPECT_EQ(Mods().height(), listHeight);
    EXPECT_TRUE(captions.contains("Copying files/Uninstall Mod"));
    EXPECT_TRUE(captions.contains("Install Mod/Deleting files"));
    EXPECT_TRUE(captions.contains("Install Mod/Restoring backup"));

    ASSERT_EQ(boxes.Seen().size(), 3u);
    EXPECT_EQ(boxes.Seen()[0].text, "You have selected the Maps mod. Do you want to install it?");
    EXPECT_EQ(boxes.Seen()[0].title, "Install Maps mod?");
    EXPECT_EQ(boxes.Seen()[0].icon, QMessageBox::Question);
    EXPECT_EQ(boxes.Seen()[2].text, "Are you sure you want to uninstall the Alpha mod?");
}

TEST_F(InstallWindow, NoChangesNothing) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.Then(kNo).Then(kYes).Then(kNo);
    Item("menuModInstall").trigger();
    Item("menuModUninstall").trigger();
    MakeFolder("program/mods/Alpha/backup");
    boxes.Then(kYes).Then(kNo);
    Item("menuModInstall").trigger();
    ExpectIdle();
    EXPECT_EQ(Read("game/odf/ships/a.odf"), "game's own");
    ASSERT_EQ(boxes.Seen().size(), 5u);
    EXPECT_EQ(boxes.Seen()[2].title, "Mod not installed");
    EXPECT_EQ(boxes.Seen()[4].text, "It appears that the Alpha mod is already installed. Continue?");
    EXPECT_EQ(boxes.Seen()[4].title, "Continue installation?");
    EXPECT_EQ(boxes.Seen()[4].icon, QMessageBox::Warning);
}

TEST_F(InstallWindow, WithoutAGameThereIsNoQuestion) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    for (const std::string& game : {std::string(kGameNotFound), std::string(), Path("gone").toStdString(),
                                    Path("program/mods/Bravo").toStdString()}) {
        window->GameDirectory = game;
        Item("menuModInstall").trigger();
        Item("menuModUninstall").trigger();
    }
    ASSERT_EQ(boxes.Seen().size(), 8u);
    for (const SeenBox& box : boxes.Seen()) {
        EXPECT_EQ(box.title, "Error!");
        EXPECT_EQ(box.icon, QMessageBox::Critical);
    }
    ExpectIdle();
    window->GameDirectory = Path("gone").toStdString();
    Item("menuModRefreshModList").trigger();
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "(T2 folder not found)");
}

TEST_F(InstallWindow, ActsOnTheModThatTheQuestionNamed) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    // Another mod takes the first row and the selection while the question is open.
    boxes.Then(kYes, [this](QMessageBox&) {
        Write("program/mods/Aaa/odf/ships/a.odf", "Aaa's");
        Write("program/mods/Aaa/ModInfo.txt", "Author: first in the list");
        Tick();
        Mods().setCurrentRow(0);
    });
    Item("menuModInstall").trigger();
    EXPECT_EQ(Read("game/odf/ships/a.odf"), "Alpha's");
    EXPECT_EQ(SelectedText(), "Aaa");

    Mods().setCurrentRow(3);
    ASSERT_EQ(SelectedText(), "Bravo");
    for (const char* command : {"menuModInstall", "menuModUninstall"}) {
        boxes.Then(kYes, [this](QMessageBox&) {
            Respell("program/mods/Bravo", "program/mods/bravo"); // which is another mod
        });
        if (QLatin1String(command) == QLatin1String("menuModUninstall")) boxes.Then(kYes);
        boxes.Then(QMessageBox::Ok);
        Item(command).trigger();
        EXPECT_EQ(boxes.Seen().back().title, "Folder not found.") << command;
        EXPECT_EQ(boxes.Seen().back().icon, QMessageBox::Warning);
        EXPECT_EQ(Read("game/odf/ships/a.odf"), "Alpha's");
        EXPECT_EQ(Control<QLabel>("lblModsMaker").text(), "first in the list");
        ExpectIdle();
        Respell("program/mods/bravo", "program/mods/Bravo");
        Tick();
        Mods().setCurrentRow(3);
    }
}

TEST_F(InstallWindow, SaysWhyNothingWasInstalled) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.Then(kYes).Then(QMessageBox::Ok);
    files.refuseFolders = true;
    Item("menuModInstall").trigger();
    ASSERT_EQ(boxes.Seen().size(), 2u);
    EXPECT_EQ(boxes.Seen()[1].title, "Error!");
    EXPECT_TRUE(boxes.Seen()[1].text.contains("Alpha"));
    EXPECT_EQ(Read("game/odf/ships/a.odf"), "game's own");
    EXPECT_FALSE(Exists("program/mods/Alpha/Backup"));
    ExpectIdle();
}

} // namespace
} // namespace quillbay::test
