#include "shell/GameDirectory.h"
#include "shell/frmChangeT2Dir.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace quillbay::test {
namespace {

class Selector : public SelectorFixture {};

/// One line an item: depth, name, caption, key, and "+" for what can be chosen already.
void Dump(const QList<QAction*>& items, const QString& indent, QString& text) {
    for (const QAction* item : items) {
        if (const QMenu* menu = item->menu()) {
            text += indent + menu->objectName() + " [" + menu->title() + "]\n";
            Dump(menu->actions(), indent + "  ", text);
        } else if (item->isSeparator()) {
            text += indent + "-" + item->objectName() + "\n";
        } else {
            text += indent + item->objectName() + " [" + item->text() + "] " + item->shortcut().toString() +
                    (item->isEnabled() ? "+" : "") + "\n";
        }
    }
}

constexpr char kMenus[] = R"(menuSelector [Mana&ger]
  modChangeT2Directory [C&hange T2 Directory] Ctrl+H+
  menuManagerCheckInstalledMods [Check currently installed mo&ds] Ctrl+D+
  menuManagerFileInstaller [&File installer] Ctrl+F
  menuManagerModFiles [Find Modified/&New files]
    menuManagerFindModifiedFiles [Open Find Modified/&New files] Ctrl+N
    menuManagerModFilesRecompile [&Recompile definition file] )"
                          R"(
  menuManagerInstallMapEditor [Install map editor] Ctrl+P
  menuManagerOptions [Options] +)"
                          R"(
  menuManagerSmoothClose [Smooth closing]
    menuManagerSmoothClosingXAxis [X Axis] +
    menuManagerSmoothClosingYAxis [Y Axis] +
    menuManagerSmoothClosingSimultaneous [Simultaneous] +
    menuManagerSmoothClosingMainWindowOnly [Main window only] +
  -menuSelectorSeparator1
  menuManagerLaunch [&Launch]
    menuManagerLaunchT2 [&Tempest II] Ctrl+A
    menuManagerLaunchMapEditor [&Map Editor] )"
                          R"(
    -menuManagerLaunchSeparator1
    menuManagarLaunchT2Dir [T&empest II Directory] )"
                          R"(
    menuManagerLaunchQuillbayDir [&Quillbay Directory] )"
                          R"(
    -menuManagerLaunchSeparator2
    menuManagerLaunchNimb [Tempest &Universe] )"
                          R"(
    menuManagerLaunchZeph [Tempest &Fleet Command] )"
                          R"(
    menuManagerLaunchLodestar [Lode&star] )"
                          R"(
  -menuManagerSeparator2
  menuQuit [&Quit] +
menuMod [&Mod]
  menuModCompatablility [&Check Compatability] Ctrl+C
  menuModEdit [&Edit ModInfo.txt file] Ctrl+E+
  menuModAnalyzeMod [Analy&ze Mod Files] Ctrl+Z
  menuModTechTree [View Available &Tech Trees] Ctrl+T
  menuModOpenOdfChecker [Open odf checker] Ctrl+K
  -menuModSeparator1
  menuModCurrentMod [Current Mod]
    menuModInstall [&Install Mod] Ctrl+I+
    menuModRefreshModList [&Refresh Mod List] Ctrl+R+
    menuModUninstall [&Uninstall Mod] Ctrl+U+
    menuModCurrentModRemoveMod [Rem&ove mod] Del
    -modCurrentModSeparator1
    menuModCurrentModViewReadme [Vie&w mod's readme] Ctrl+W
    -modCurrentModSeparator2
    menuModCurrentModOpen [Open directory] Ctrl+O
    menuModCurrentModSubfolders [Make su&bfolders] Ctrl+B
    menuModCurrentModRemoveSubfolders [Remove &subfolders] Ctrl+S
  -menuModSeparator3
  menuModMakeNewFolder [&Make new mod folder] Ctrl+M
menuStatus [&Status]
  menuStatusMapEditor [Map Editor - Not installed] +
  menuStatusv11Patch [v1.1 Patch - Not installed] +
menuHelp [&Help]
  menuHelpAbout [&About] F1
  menuHelpViewReadme [&View Readme] Ctrl+V
  -menuHelpSeperator1
  menuHelpChanges [Changes from &last release] Ctrl+L
)";

TEST_F(Selector, HasItsMenusInOrder) {
    Write("program/mods/Alpha/readme.txt", "");
    Write("program/FileList.txt", "");
    ASSERT_TRUE(Start());
    window->ShowModDetails();
    emit Control<QMenu>("menuSelector").aboutToShow();
    QString text;
    Dump(window->menuBar()->actions(), {}, text);
    EXPECT_EQ(text.toStdString(), kMenus);
}

TEST_F(Selector, StartsWithGameModsAndSettings) {
    Write("game/ODF/ships/a.odf", "");
    Write("game/other/b.odf", "not in a known folder");
    MakeFolder("program/MODS/Alpha");
    settings.values = {{"Smooth Closing/XAxis", "true"}, {"Fade/Intensity", "300"}, {"Fade/Speed", " 12.6x"}};
    ASSERT_TRUE(Start());
    EXPECT_EQ(window->windowTitle(), "Quillbay");
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "2");
    EXPECT_TRUE(Exists("program/mods/Alpha"));
    EXPECT_EQ(SelectedText(), "Alpha");
    EXPECT_EQ(window->size(), QSize(473, 410)) << "at the standard font";
    EXPECT_FALSE(Item("menuManagerSmoothClosingXAxis").isChecked());
    EXPECT_TRUE(Item("menuManagerSmoothClosingYAxis").isChecked());
    EXPECT_FALSE(Item("menuManagerSmoothClosingSimultaneous").isChecked());
    EXPECT_TRUE(Item("menuManagerSmoothClosingMainWindowOnly").isChecked());
    EXPECT_EQ(window->FadeIntensity, 0);
    EXPECT_EQ(window->FadeSpeed, 13);
    Item("menuManagerSmoothClosingXAxis").trigger();
    Item("menuManagerSmoothClosingMainWindowOnly").trigger();
    EXPECT_EQ(settings.values["Smooth Closing/XAxis"], "True");
    EXPECT_EQ(settings.values["Smooth Closing/Main Window Only"], "False");
    EXPECT_FALSE(window->SmoothCloseMainWindowOnly());
}

TEST_F(Selector, AsksForAMissingGameAndEndsWhenThereIsNone) {
    registry.path = Path("gone").toStdString();
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::Ok, [this](QMessageBox&) {
        EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "(T2 folder not found)");
        EXPECT_EQ(window->GameDirectory, kGameNotFound);
    });
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [] {
        auto* chooser = qobject_cast<frmChangeT2Dir*>(QApplication::activeModalWidget());
        if (chooser && chooser->isVisible()) chooser->findChild<QPushButton*>("cmdCancel")->click();
    });
    poll.start(0);
    EXPECT_FALSE(Start());
    ASSERT_EQ(boxes.Seen().size(), 1u);
    EXPECT_EQ(boxes.Seen()[0].text, "Pause");
    EXPECT_EQ(boxes.Seen()[0].title, "Quillbay");
    EXPECT_TRUE(window->isHidden());
    EXPECT_FALSE(Control<QTimer>("timRefreshModList").isActive());
}

TEST_F(Selector, NothingResumesAfterQuittingDuringStart) {
    registry.path.clear();
    AnswerBoxes boxes;
    window = std::make_unique<frmSelector>(
        Services{files, registry, settings, shell, sound, Path("program").toStdString()});
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

} // namespace
} // namespace quillbay::test
