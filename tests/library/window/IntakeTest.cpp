#include "support/ArchiveMaker.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

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
    Make({"program/mods/mod/odf/a", "program/mods/mod/Backup/odf/a", "program/mods/Other/x"});
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
    Make({"program/mods/Mod/odf/a"});
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

TEST_F(IntakeWindow, AFileIsChosenFromTheMenusOfTheEmptyListAndOfTheOutcome) {
    Put("Cool.zip", "odf/a=1");
    ASSERT_TRUE(Start());
    const auto opens = [this](QWidget& at, const char* menu) {
        QContextMenuEvent request(QContextMenuEvent::Keyboard, {3, 3}, at.mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(&at, &request);
        QMenu& shown = Control<QMenu>(menu);
        const bool hasItem = shown.isVisible() && shown.actions().contains(&Item("menuModAddFromFile"));
        shown.close();
        return hasItem;
    };
    EXPECT_TRUE(opens(Mods(), "menuNoMods"));
    EXPECT_TRUE(opens(Control<QLabel>("lblOutcome"), "menuOutcome"));
    QTimer::singleShot(0, window.get(), [&] {
        auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
        EXPECT_EQ(dialog.windowTitle(), "Add mod from file");
        dialog.selectFile(Path("Cool.zip"));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    Item("menuModAddFromFile").trigger();
    EXPECT_EQ(Rows(), QStringList{"Cool"});
    EXPECT_FALSE(opens(Mods(), "menuNoMods"));
    Control<QAction>("menuOutcomeCopy").trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), Outcome());
}

TEST_F(IntakeWindow, WhatWasInterruptedIsPutBackAtTheNextStart) {
    Make({"program/~quillbay.add/old/Mod/odf/a", "program/~quillbay.add/new/Mod/Backup/odf/a",
          "program/~quillbay.add/in/half"});
    ASSERT_TRUE(Start());
    EXPECT_EQ(Rows(), QStringList{"Mod"});
    EXPECT_TRUE(Exists("program/mods/Mod/Backup/odf/a") && Exists("program/mods/Mod/odf/a"));
    EXPECT_FALSE(Exists("program/~quillbay.add"));
}

} // namespace
} // namespace quillbay::test
