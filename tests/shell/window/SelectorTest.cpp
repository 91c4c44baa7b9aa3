#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

namespace quillbay::test {
namespace {

class Selector : public SelectorFixture {};

/// A line for each menu: the captions and keys of its items, with "!" before what is disabled.
QString Dump(const QMenu& menu) {
    QStringList texts;
    QString submenus;
    for (const QAction* item : menu.actions()) {
        const QString text = item->isSeparator() ? item->objectName() : item->text();
        texts << (item->isEnabled() ? "" : "!") + text + (item->menu() ? " >" : "");
        if (const QString key = item->shortcut().toString(); !key.isEmpty()) texts.back() += ' ' + key;
        if (item->menu()) submenus += Dump(*item->menu());
    }
    return menu.objectName() + ": " + texts.join(", ") + "\n" + submenus;
}

constexpr char kMenus[] =
    "menuSelector: C&hange T2 Directory Ctrl+H, Check currently installed mo&ds Ctrl+D, &File installer "
    "Ctrl+F, Find Modified/&New files >, Install map editor Ctrl+P, Options, Smooth closing >, "
    "menuSelectorSeparator1, &Launch >, menuManagerSeparator2, &Quit\n"
    "menuManagerModFiles: Open Find Modified/&New files Ctrl+N, &Recompile definition file\n"
    "menuManagerSmoothClose: X Axis, Y Axis, Simultaneous, Main window only\n"
    "menuManagerLaunch: &Tempest II Ctrl+A, !&Map Editor, menuManagerLaunchSeparator1, T&empest II "
    "Directory, &Quillbay Directory, menuManagerLaunchSeparator2, Tempest &Universe, Tempest &Fleet "
    "Command, Lode&star\n"
    "menuMod: &Check Compatability Ctrl+C, &Edit ModInfo.txt file Ctrl+E, Analy&ze Mod Files Ctrl+Z, View "
    "Available &Tech Trees Ctrl+T, Open odf checker Ctrl+K, menuModSeparator1, Current Mod >, "
    "menuModSeparator3, &Make new mod folder Ctrl+M\n"
    "menuModCurrentMod: &Install Mod Ctrl+I, &Refresh Mod List Ctrl+R, &Uninstall Mod Ctrl+U, Rem&ove mod "
    "Del, modCurrentModSeparator1, Vie&w mod's readme Ctrl+W, modCurrentModSeparator2, Open directory "
    "Ctrl+O, Make su&bfolders Ctrl+B, Remove &subfolders Ctrl+S\n"
    "menuStatus: Map Editor - Not installed, v1.1 Patch - Not installed\n"
    "menuHelp: &About F1, &View Readme Ctrl+V, menuHelpSeperator1, Changes from &last release Ctrl+L\n";

TEST_F(Selector, HasItsMenusInOrder) {
    Make({"program/mods/Alpha/readme.txt", "program/FileList.txt"});
    ASSERT_TRUE(Start());
    window->ShowModDetails();
    emit Control<QMenu>("menuSelector").aboutToShow();
    QString text;
    for (const QAction* menu : window->menuBar()->actions())
        text += Dump(*menu->menu());
    EXPECT_EQ(text.toStdString(), kMenus);
}

TEST_F(Selector, StartsWithGameModsAndSettings) {
    Make({"game/ODF/ships/a.odf", "game/other/b.odf", "program/MODS/Alpha/"});
    settings.values = {{"Smooth Closing/XAxis", "true"}, {"Fade/Intensity", "300"}, {"Fade/Speed", " 12.6x"}};
    ASSERT_TRUE(Start());
    EXPECT_EQ(window->windowTitle(), "Quillbay");
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "2") << "those in known folders";
    EXPECT_TRUE(Exists("program/mods/Alpha"));
    EXPECT_EQ(SelectedText(), "Alpha");
    EXPECT_EQ(window->size(), QSize(473, 410)) << "at the standard font";
    EXPECT_FALSE(Item("menuManagerSmoothClosingXAxis").isChecked());
    EXPECT_TRUE(window->SmoothCloseMainWindowOnly());
    EXPECT_EQ(window->FadeIntensity, 0);
    EXPECT_EQ(window->FadeSpeed, 13);
}

TEST_F(Selector, NothingResumesAfterQuittingDuringStart) {
    registry.path.clear();
    AnswerBoxes boxes;
    window = std::make_unique<frmSelector>(
        Services{files, registry, settings, shell, sound, OpenArchive, Path("program").toStdString()});
    QTimer::singleShot(0, window.get(), [this] { Item("menuQuit").trigger(); });
    EXPECT_FALSE(window->Start());
    EXPECT_EQ(window->windowTitle(), "Quillbay - Loading");
    EXPECT_TRUE(boxes.Seen().empty());
    EXPECT_TRUE(window->isHidden());
}

TEST_F(Selector, KeysWorkWithoutOpeningTheMenusUnlessTheyAreDisabled) {
    MakeFolder("program/mods/Alpha");
    ASSERT_TRUE(Start());
    const auto press = [this](Qt::Key key) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
    };
    AnswerBoxes boxes;
    press(Qt::Key_I);
    window->SetMainMenusEnabled(false);
    press(Qt::Key_I);
    EXPECT_EQ(boxes.Seen().size(), 1u);
    window->SetMainMenusEnabled(true);
    press(Qt::Key_D);
    EXPECT_TRUE(Item("menuManagerCheckInstalledMods").isChecked());
    window->close();
    EXPECT_TRUE(
        WaitFor([] { return QApplication::topLevelWidgets().isEmpty() || !QApplication::activeWindow(); }));
    EXPECT_EQ(window->Phase, ProgramPhase::Ended);
    EXPECT_TRUE(window->isHidden());
}

class LaunchWindow : public SelectorFixture {
protected:
    LaunchWindow() {
        MakeFolder("dosdevices");
        QFile::link(Path("."), Path("dosdevices/g:"));
    }
    /// Chooses the item; what the boxes said, and then what was opened.
    QString Trigger(const char* item) {
        Item(item).trigger();
        QStringList said;
        for (; seen_ < boxes.Seen().size(); ++seen_)
            said << boxes.Seen()[seen_].title + ": " + boxes.Seen()[seen_].text;
        for (const auto& opened : shell.opened)
            said << QString::fromStdString(opened.target + ">" + opened.workingFolder);
        shell.opened.clear();
        return said.join('|').replace('\\', '/').remove(Path(".").chopped(1));
    }
    AnswerBoxes boxes;

private:
    std::size_t seen_ = 0;
};

TEST_F(LaunchWindow, StartsTheGameInThePrefixThatNamedIt) {
    for (const bool chosen : {false, true}) {
        registry.prefix = Path("named").toStdString();
        registry.otherPrefixes = !chosen;
        MakeFolder("named/dosdevices");
        QFile::link(Path("game"), Path("named/dosdevices/s:"));
        ASSERT_TRUE(Start());
        auto& outcome = Control<QLabel>("lblOutcome");
        EXPECT_EQ(outcome.text().contains(Path("named")), !chosen) << qPrintable(outcome.text());
        if (chosen) window->GameDirectory += '/';
        Item("menuManagerLaunchT2").trigger();
        ASSERT_FALSE(shell.opened.empty());
        EXPECT_EQ(shell.opened.back().prefix, chosen ? "" : registry.prefix);
        EXPECT_TRUE(Read("game/T2QB Launch T2.bat").contains(chosen ? "CD G:\\game\r" : "CD S:\\\r"));
    }
}

TEST_F(LaunchWindow, EndsOnceTheBatchFileIsWrittenWhateverTheShellSays) {
    Write("game/t2qb launch t2.BAT", "old");
    ASSERT_TRUE(Start());
    QDir root(Path("."));
    root.rename("dosdevices/g:", "away");
    const QString said = Trigger("menuManagerLaunchT2");
    EXPECT_TRUE(said.startsWith("Error!: ") && said.contains("T2QB Launch T2.bat")) << qPrintable(said);
    root.rename("away", "dosdevices/g:");
    root.remove("game/Tempest2.exe");
    EXPECT_EQ(Trigger("menuManagerLaunchT2"), "") << "there is no game";

    shell.answer = std::make_error_code(std::errc::no_such_file_or_directory);
    EXPECT_EQ(Trigger("menuManagerLaunchZeph"), "https://tempest-fleet-command.example/>");
    boxes.Then(QMessageBox::Yes);
    EXPECT_TRUE(Trigger("menuManagerInstallMapEditor").endsWith("|game/T2QB Launch T2.bat>game"));
    EXPECT_EQ(Read("game/T2QB Launch T2.bat"), "@Echo Off\r\nCD G:\\game\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LaunchWindow, InstallsAndStartsTheMapEditor) {
    Write("game/hlvx", "in another letter case");
    ASSERT_TRUE(Start());
    boxes.Then(QMessageBox::No).ThenType("  ").Then(QMessageBox::Ok).ThenType("\u0436").Then(QMessageBox::Ok);
    boxes.ThenType(" a b");
    EXPECT_EQ(Trigger("menuManagerInstallMapEditor"),
              "Installation complete: Installation complete. Would you like to launch Tempest II now?");
    EXPECT_EQ(Read("game/HLVX") + Read("game/unsupportedextension_mapedit"), "");
    const QString question = "Enter file name: Please enter the name of the file you want to have edited.|";
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), question + "Quillbay: Invalid name.");
    EXPECT_TRUE(Trigger("menuManagerLaunchMapEditor").endsWith("\u0436"));
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), question + "game/T2QB Launch Map Editor.bat>game");
    EXPECT_TRUE(Read("game/T2QB Launch Map Editor.bat").contains("\r\nTempest2.exe /edit  a b\r\n"));
}

TEST_F(LaunchWindow, OpensFoldersAddressesAndReadmes) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Trigger("menuModCurrentModOpen") + Trigger("menuModCurrentModViewReadme"), "") << "with no mod";
    Make({"program/mods/M/Addon/X/a readme folder/", "program/mods/M/Addon/X/My README.txt"});
    Tick();
    Mods().setCurrentRow(1);
    EXPECT_EQ(Trigger("menuModCurrentModOpen"), "program/mods/M/Addon/X>");
    EXPECT_EQ(Trigger("menuModCurrentModViewReadme"), "program/mods/M/Addon/X/My README.txt>");
    EXPECT_EQ(Trigger("menuManagarLaunchT2Dir"), "game>");
    EXPECT_EQ(Trigger("menuManagerLaunchNimb"), "https://tempest-universe.example/>");
}

} // namespace
} // namespace quillbay::test
