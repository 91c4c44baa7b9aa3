#include "support/ArchiveMaker.h"
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

    Control<QPushButton>("cmdRefresh").setFocus();
    Control<QPushButton>("cmdRefresh").click();
    EXPECT_EQ(treeSizes, details + 1) << "details once for each action of the user";
    EXPECT_EQ(window->focusWidget(), &Mods());
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
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&list, &held);
    list.clearSelection();
    QTest::keyClick(&list, Qt::Key_Return); // no row is selected, although one is current
    EXPECT_EQ(Titles(boxes),
              "? Install Mod 19 mod?|? Install Mod 19 mod?|? Uninstall Mod 19 mod?|! Select a mod");
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
    MakeMods({"Alpha/Addon/X/Backup/odf/ships/a.odf", "Bravo/b.txt"});
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
    MakeFolder("program/mods/Alpha");
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
    Control<QPushButton>("cmdRefresh").setFocus();
    Item("menuModCurrentModRemoveSubfolders").trigger();
    EXPECT_EQ(window->focusWidget(), &Mods());
    EXPECT_TRUE(Control<QLabel>("lblOutcome").text().startsWith("Removed "));
    EXPECT_EQ(QDir(Path("program/mods/New & mod")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList{"odf"});
    EXPECT_EQ(Read("program/mods/New & mod/odf/ships/own.odf"), "own");
    EXPECT_EQ(Titles(boxes),
              "Make new folder|Make new folder|Quillbay|Make new folder|X Error!|Make new folder|"
              "Make new folder|Quillbay|? Make subfolders?|? Delete subfolders?");
    EXPECT_EQ(boxes.Seen()[2].text, "Invalid name.");
    EXPECT_EQ(boxes.Seen()[7].text, "Folder already exists.");
}

class IntakeWindow : public SelectorFixture {
protected:
    void Put(const char* name, const char* contents, Packing packing = Packing::Zip) const {
        Write(name, QByteArray::fromStdString(Pack(packing, contents)));
    }
    QString Outcome() const { return Control<QLabel>("lblOutcome").text(); }
    /// Presses a button by its caption.
    static std::function<void(QMessageBox&)> Press(const char* caption) {
        return [caption](QMessageBox& box) {
            for (QAbstractButton* button : box.buttons())
                if (button->text() == QLatin1String(caption)) return button->click();
            ADD_FAILURE() << "no " << caption;
        };
    }
};

TEST_F(IntakeWindow, WhatIsDroppedBecomesAModAndNothingIsInstalled) {
    Put("Cool_v1.2.zip", "odf/ships/new.odf=1 ModInfo.txt=Author Backup/x=2 Thumbs.db=3");
    Put("pack.tar", "A/odf/a=1 B/odf/b=2", Packing::Tar);
    Make({"folder/Plain/odf/c.odf", "program/mods/Old/odf/a.odf"});
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Drop("Cool_v1.2.zip"));
    EXPECT_EQ(Rows(), (QStringList{"Cool", "Old"}));
    EXPECT_EQ(SelectedText(), "Cool");
    EXPECT_EQ(Outcome(), "Cool is in the library: 2 files; 2 left out.");
    const QString tip = Control<QLabel>("lblOutcome").toolTip();
    for (const char* named : {"Backup: the mod would count as installed", "Thumbs.db: no part of a mod"})
        EXPECT_TRUE(tip.contains(named)) << qPrintable(tip);
    EXPECT_FALSE(Exists("game/odf") || Exists("program/mods/Cool/Backup"));
    EXPECT_TRUE(Exists("Cool_v1.2.zip"));

    EXPECT_TRUE(Drop({QUrl::fromLocalFile(Path("pack.tar")), QUrl::fromLocalFile(Path("folder/Plain"))}));
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "Cool", "Old", "Plain"}));
    EXPECT_EQ(Outcome(), "3 mods are in the library: 3 files.");
    EXPECT_EQ(QDir(Path("program")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{"mods"});
}

TEST_F(IntakeWindow, OnlyAnIdleWindowTakesOnlyFilesAndOnlyAsACopy) {
    Put("Cool.zip", "odf/a=1");
    ASSERT_TRUE(Start());
    const QUrl zip = QUrl::fromLocalFile(Path("Cool.zip"));
    EXPECT_FALSE(Drop(QList<QUrl>()));
    EXPECT_FALSE(Drop({QUrl("http://host/Cool.zip")}));
    EXPECT_FALSE(Drop({zip}, Qt::MoveAction));
    AnswerBoxes boxes;
    bool isTaken = true;
    boxes.Then(QMessageBox::No, [&](QMessageBox&) { isTaken = Drop({zip}); });
    Item("menuModInstall").trigger();
    EXPECT_FALSE(isTaken);
    EXPECT_EQ(Rows(), QStringList{"(No mods found.)"});
}

TEST_F(IntakeWindow, ANameThatIsTakenIsAskedAbout) {
    Put("Mod.zip", "odf/a=new");
    Put("(No mods found.).zip", "odf/a=new");
    MakeMods({"mod/odf/a", "mod/Backup/odf/a", "Other/x"});
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::NoButton, Press("Cancel")).Then(QMessageBox::NoButton, Press("Another name"));
    boxes.ThenType("a:b").Then(QMessageBox::Ok).ThenType("x.").Then(QMessageBox::Ok).ThenType("Third");
    boxes.Then(QMessageBox::NoButton, Press("Replace it"));
    Drop("Mod.zip");
    EXPECT_EQ(Rows(), (QStringList{"mod", "Other"}));
    Drop("Mod.zip");
    EXPECT_EQ(Read("program/mods/Third/odf/a"), "new");
    Drop("Mod.zip");
    EXPECT_EQ(Read("program/mods/mod/odf/a"), "new");
    EXPECT_EQ(Read("program/mods/mod/Backup/odf/a"), "program/mods/mod/Backup/odf/a");
    EXPECT_EQ(Outcome(), "mod is in the library: 1 file; install it again to bring the game up to date.");
    EXPECT_EQ(SelectedText(), "mod");
    EXPECT_TRUE(Control<QPushButton>("cmdUninstallMod").isEnabled());
    Drop("(No mods found.).zip");
    EXPECT_EQ(Titles(boxes), "? Quillbay|? Quillbay|Make new folder|X Error!|Make new folder|Quillbay|"
                             "Make new folder|? Quillbay|Make new folder");
    EXPECT_EQ(boxes.Seen()[0].text, "mods\\Mod exists already.");
    EXPECT_EQ(Rows(), (QStringList{"mod", "Other", "Third"}));
}

TEST_F(IntakeWindow, WhatIsRefusedSaysWhyAndNamesTheArchive) {
    Put("locked.zip", "odf/a=1", Packing::EncryptedZip);
    Put("evil.zip", "odf/a=1 ../x=2");
    Write("text.zip", "no archive");
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    Drop("locked.zip");
    Drop("evil.zip");
    Drop("text.zip");
    Drop("program/mods");
    EXPECT_EQ(Titles(boxes), "X Error!|X Error!|X Error!|X Error!");
    const char* const said[] = {
        "locked.zip was not taken into the library. The archive is protected by a password.",
        "evil.zip was not taken into the library. A name in it leads out",
        "text.zip was not taken into the library. It is no archive of a known format.",
        "mods was not taken into the library. The folder is the mods folder"};
    for (std::size_t i = 0; i < std::size(said); ++i)
        EXPECT_TRUE(boxes.Seen()[i].text.startsWith(said[i])) << qPrintable(boxes.Seen()[i].text);
    EXPECT_EQ(Outcome(), "");
}

TEST_F(IntakeWindow, EscapeStopsItAndOtherKeysDoNothing) {
    Put("Cool.zip", "odf/a=1 odf/b=2");
    Put("Next.zip", "odf/a=1");
    MakeMods({"Mod/odf/a"});
    FaultyFileSystem hands(*disk);
    std::function<void()> act; // of the user, while a file is made
    hands.hook = [&](auto operation, auto, auto) {
        if (operation == "MakeFile") act();
        return std::error_code();
    };
    ASSERT_TRUE(Start(hands));
    AnswerBoxes boxes;
    int acted = 0;
    const QUrl cool = QUrl::fromLocalFile(Path("Cool.zip"));
    act = [&] {
        ++acted;
        EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isVisible());
        EXPECT_FALSE(Control<QMenu>("menuMod").isEnabled());
        QTest::keyClick(&Mods(), Qt::Key_Return);
        QTest::mouseClick(&Control<QPushButton>("cmdInstallMod"), Qt::LeftButton);
        EXPECT_FALSE(Drop({cool}));
        window->close();
        Tick();
        EXPECT_EQ(Rows(), QStringList{"Mod"});
    };
    EXPECT_TRUE(Drop({cool, QUrl::fromLocalFile(Path("Next.zip"))})); // closing stops, too
    EXPECT_EQ(acted, 1);
    act = [&] {
        ++acted;
        QTest::keyClick(&Mods(), Qt::Key_Escape);
    };
    EXPECT_TRUE(Drop({cool, QUrl::fromLocalFile(Path("Next.zip"))}));
    EXPECT_EQ(acted, 2);
    EXPECT_EQ(Titles(boxes), "");
    EXPECT_EQ(Rows(), QStringList{"Mod"});
    EXPECT_EQ(Outcome(), "");
    EXPECT_TRUE(window->isVisible() && Control<QMenu>("menuMod").isEnabled());
    EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isHidden());
    EXPECT_FALSE(Exists("program/~quillbay.add"));
}

} // namespace
} // namespace quillbay::test
