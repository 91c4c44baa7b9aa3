#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

class ModList : public SelectorFixture {
protected:
    /// Starts with more mods than the list can show: Mod 10 to Mod 69.
    void StartWithManyMods() {
        for (int mod = 10; mod < 70; ++mod)
            MakeFolder(QStringLiteral("program/mods/Mod %1").arg(mod));
        ASSERT_TRUE(Start());
    }
    AnswerBoxes boxes;
};

TEST_F(ModList, RebuildKeepsTheSelectionByPathAndFollowsTheDisk) {
    Make({"program/mods/Bravo/Addon/Maps/", "program/mods/alpha/Addon/Maps/", "program/mods/loose.txt"});
    ASSERT_TRUE(Start());
    EXPECT_EQ(Rows(), (QStringList{"alpha", "    Maps", "Bravo", "    Maps"}));
    EXPECT_EQ(SelectedText(), "alpha");

    Mods().setCurrentRow(3);
    MakeFolder("program/mods/aardvark");
    Tick();
    EXPECT_EQ(Rows(), (QStringList{"aardvark", "alpha", "    Maps", "Bravo", "    Maps"}));
    EXPECT_EQ(Mods().row(Mods().selectedItems().value(0)), 4) << "the addon of Bravo, not that of alpha";

    QDir().rename(Path("program/mods/Bravo"), Path("program/mods/Charlie"));
    Tick();
    EXPECT_EQ(SelectedText(), "aardvark");
    QDir(Path("program/mods")).removeRecursively();
    Tick();
    EXPECT_TRUE(Exists("program/mods"));
    EXPECT_EQ(Rows(), QStringList("(No mods found.)"));
    EXPECT_EQ(Control<QLabel>("lblModsMaker").text(), "(No mod selected)");

    // The placeholder is not built anew every second, and stands for no mod.
    const QSignalSpy rebuilt(Mods().model(), &QAbstractItemModel::rowsInserted);
    Tick();
    EXPECT_TRUE(rebuilt.isEmpty());
    EXPECT_TRUE(Mods().selectedItems().isEmpty());
    Mods().setCurrentRow(0);
    Item("menuModInstall").trigger();
    Item("menuModUninstall").trigger();
    Item("menuModCurrentModRemoveMod").trigger();
    EXPECT_EQ(Titles(boxes), "! Install mod first|! Install mod first");
}

TEST_F(ModList, NothingChangedMeansNothingRebuilt) {
    StartWithManyMods();
    Mods().setCurrentRow(5);
    Mods().verticalScrollBar()->setValue(20);
    QCoreApplication::processEvents();
    const int details = treeSizes;
    const QSignalSpy rebuilt(Mods().model(), &QAbstractItemModel::rowsInserted);
    Tick();
    QCoreApplication::processEvents();
    EXPECT_TRUE(rebuilt.isEmpty());
    EXPECT_EQ(treeSizes, details);

    Control<QPushButton>("cmdRefresh").click();
    EXPECT_EQ(treeSizes, details + 1) << "details once for each action of the user";
    MakeFolder("program/mods/Zulu");
    Tick();
    EXPECT_EQ(Mods().count(), 61);
    EXPECT_EQ(Mods().verticalScrollBar()->value(), 20);
    EXPECT_EQ(SelectedText(), "Mod 15");
    EXPECT_EQ(Control<QPushButton>("cmdRefresh").text(), "&Refresh Mod List");
    EXPECT_TRUE(Mods().isEnabled());
}

TEST_F(ModList, TwentyFourRowsFillTheListAndTheMouseActsOnTheOneBelowIt) {
    StartWithManyMods();
    QListWidget& list = Mods();
    EXPECT_EQ(list.viewport()->height(), 24 * list.visualItemRect(list.item(0)).height());
    list.verticalScrollBar()->setValue(7);
    EXPECT_EQ(list.indexAt(QPoint(5, list.viewport()->height() - 1)).row(), 30);

    auto& menu = Control<QMenu>("menuModCurrentMod");
    QTest::mouseClick(list.viewport(), Qt::RightButton, {},
                      QPoint(5, list.visualItemRect(list.item(9)).center().y()));
    EXPECT_EQ(SelectedText(), "Mod 19");
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(menu.defaultAction(), &Item("menuModInstall"));
    menu.hide();

    const QPoint row = list.visualItemRect(list.item(9)).center();
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton}) {
        QTest::mouseClick(list.viewport(), button, {}, row);
        QTest::mouseDClick(list.viewport(), button, {}, row);
    }
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Backspace);
    QTest::keyClick(&list, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_Backspace, Qt::AltModifier);
    list.clearSelection();
    QTest::keyClick(&list, Qt::Key_Return); // no row is selected, although one is current
    EXPECT_EQ(Titles(boxes),
              "? Install Mod 19 mod?|? Install Mod 19 mod?|? Uninstall Mod 19 mod?|! Select a mod");
}

TEST_F(ModList, TheListOfInstalledModsShowsWhatHasABackupInExactSpelling) {
    Make({"program/mods/Alpha/Addon/Extra/", "program/mods/Beta/", "program/mods/Gamma/backup/"});
    ASSERT_TRUE(Start());
    Open("menuManagerCheckInstalledMods", "frmInstalledMods");
    const auto listed = [&] {
        const auto& list = In<QListWidget>("lstCurrentMods");
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.item(row)->text() + (list.item(row)->isSelected() ? " *" : "");
        return texts;
    };
    /// Of the main list: what is bold and what a screen reader calls installed.
    const auto marked = [&] {
        QStringList texts;
        for (int row = 0; row < Mods().count(); ++row) {
            const auto& item = *Mods().item(row);
            if (item.font().bold()) texts << item.text();
            EXPECT_EQ(item.data(Qt::AccessibleDescriptionRole).toString(),
                      item.font().bold() ? "Installed" : "");
        }
        return texts;
    };
    EXPECT_TRUE(Item("menuManagerCheckInstalledMods").isChecked());
    EXPECT_EQ(listed(), QStringList{"(No mods found.) *"});
    EXPECT_EQ(marked(), QStringList{"Gamma"});

    // After an installation the main list is rebuilt: addons come with the next activation.
    Make({"program/mods/Alpha/Backup/", "program/mods/Alpha/Addon/Extra/Backup/",
          "program/mods/Beta/Backup/"});
    main->SelectMod({"Beta"});
    main->RefreshModList({});
    EXPECT_EQ(listed(), (QStringList{"Alpha", "Beta *"}));

    window->activateWindow();
    ASSERT_TRUE(WaitFor([&] { return !opened->isActiveWindow(); }));
    opened->activateWindow();
    ASSERT_TRUE(WaitFor([&] { return listed().size() == 3; }));
    EXPECT_EQ(listed(), (QStringList{"Alpha *", "    Extra", "Beta"}));

    // What somebody else uninstalls is followed without building the list anew.
    const QSignalSpy rebuilt(Mods().model(), &QAbstractItemModel::rowsInserted);
    QDir(Path("program/mods/Beta")).rmdir("Backup");
    Tick();
    EXPECT_EQ(marked(), (QStringList{"Alpha", "    Extra", "Gamma"}));
    EXPECT_EQ(listed(), (QStringList{"Alpha *", "    Extra"}));
    EXPECT_FALSE(Control<QPushButton>("cmdUninstallMod").isEnabled()) << "Beta is selected";
    EXPECT_TRUE(rebuilt.isEmpty());

    opened->close();
    EXPECT_TRUE(WaitFor([&] { return !Item("menuManagerCheckInstalledMods").isChecked(); }));
}

TEST_F(ModList, TypedLettersFindNamesThenWordsInThem) {
    Make({"program/mods/Alpha/Addon/Maps/", "program/mods/New Maps/", "program/mods/Mod 1/",
          "program/mods/Mod 12/", "program/mods/Zebra/"});
    ASSERT_TRUE(Start());
    for (const auto& [typed, found] : {std::pair{"z", "Zebra"},
                                       {"map", "    Maps"},
                                       {"mod 12", "Mod 12"},
                                       {"m", "    Maps"},
                                       {"mm", "Mod 12"},
                                       {"n", "New Maps"},
                                       {"1", "Mod 1"},
                                       {"1", "Mod 12"},
                                       {"ebra", "Mod 12"}}) {
        Mods().keyboardSearch({}); // as after a pause
        QTest::keyClicks(&Mods(), typed);
        EXPECT_EQ(SelectedText(), found) << typed;
    }
}

TEST_F(ModList, RemovesTheModItAskedAbout) {
    const QString alpha = "program/mods/Alpha/odf/ships/a.odf";
    Write(alpha, "a");
    Make({"program/mods/Alpha/Addon/X/Backup/odf/ships/a.odf", "program/mods/Bravo/b.txt"});
    ASSERT_TRUE(Start());
    onChange = [this] { EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isVisible()); };
    const auto remove = [&](int row) {
        Mods().setCurrentRow(row);
        Item("menuModCurrentModRemoveMod").trigger();
    };
    main->GameDirectory = Path("program/mods/Alpha/odf").toStdString();
    remove(0);
    main->GameDirectory = Path("game").toStdString();
    const auto expectDefault = [](QMessageBox::StandardButton expected) {
        return [=](QMessageBox& box) { EXPECT_EQ(box.defaultButton(), box.button(expected)); };
    };
    boxes.Then(QMessageBox::No, expectDefault(QMessageBox::No)).Then(QMessageBox::Yes);
    boxes.Then(QMessageBox::Yes, [&](QMessageBox& box) {
        expectDefault(QMessageBox::Yes)(box);
        Respell("program/mods/Bravo", "program/mods/bravo"); // which is another mod
        Tick();
    });
    remove(0);
    remove(1);
    EXPECT_EQ(Rows(), (QStringList{"Alpha", "Bravo"}));
    remove(1);
    EXPECT_EQ(Read("program/mods/bravo/b.txt") + Read(alpha), "program/mods/Bravo/b.txta");
    EXPECT_EQ(Titles(boxes), "X Error!|? Remove Alpha mod?|? Remove     X mod?|? Remove Bravo mod?");
    EXPECT_EQ(boxes.Seen()[2].text, "Are you sure you want to remove the     X mod from your hard drive?");
    EXPECT_TRUE(boxes.Seen()[1].informative.contains("Backup"));
    EXPECT_EQ(boxes.Seen()[3].informative, "");

    files.mount = "bravo";
    boxes.Then(QMessageBox::Yes);
    remove(1);
    EXPECT_TRUE(boxes.Seen()[5].text.endsWith("bravo\nmount")) << boxes.Seen()[5].text.toStdString();
    EXPECT_EQ(Read("program/mods/bravo/b.txt"), "program/mods/Bravo/b.txt");
}

TEST_F(ModList, MakesNewModsAndTheirFolders) {
    ASSERT_TRUE(Start());
    boxes.ThenType("").ThenType("nul").Then(QMessageBox::Ok).ThenType("a?b").Then(QMessageBox::Ok);
    boxes.ThenType("New & mod")
        .ThenType("NEW & MOD")
        .Then(QMessageBox::Ok)
        .Then(QMessageBox::Yes)
        .Then(QMessageBox::Yes);
    for (int times = 0; times < 5; ++times)
        Item("menuModMakeNewFolder").trigger();
    EXPECT_EQ(SelectedText(), "New & mod");
    Item("menuModCurrentModSubfolders").trigger();
    EXPECT_TRUE(Exists("program/mods/New & mod/odf/weapons/Pulse"));
    Write("program/mods/New & mod/odf/ships/own.odf", "own");
    Item("menuModCurrentModRemoveSubfolders").trigger();
    EXPECT_EQ(QDir(Path("program/mods/New & mod")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList{"odf"});
    EXPECT_EQ(Read("program/mods/New & mod/odf/ships/own.odf"), "own");
    EXPECT_EQ(Titles(boxes),
              "Make new folder|Make new folder|Quillbay|Make new folder|X Error!|Make new folder|"
              "Make new folder|Quillbay|? Make subfolders?|? Delete subfolders?");
    EXPECT_EQ(boxes.Seen()[2].text, "Invalid name.");
    EXPECT_EQ(boxes.Seen()[7].text, "Folder already exists.");
}

} // namespace
} // namespace quillbay::test
