#include "support/SelectorFixtureWindow.h"

#include <utility>

namespace quillbay {
namespace {

class OdfChecker : public test::SelectorFixture {
protected:
    void Open() {
        if (!window && !Start()) ADD_FAILURE();
        SelectorFixture::Open("menuModOpenOdfChecker", "frmOdfChecker");
    }
    QPlainTextEdit& Text() const { return In<QPlainTextEdit>("txtOdf"); }
    /// The sentence at the end, and what its tool tip says of ignored errors.
    QString Outcome() const {
        const auto& told = Control<QLabel>("lblOutcome");
        EXPECT_EQ(Caption("lblCheckerOutcome"), told.text());
        EXPECT_EQ(In<QLabel>("lblCheckerOutcome").toolTip(), told.toolTip());
        const QString folder = QDir::toNativeSeparators(Path("game/odf/"));
        return told.text() + told.toolTip().section("ignored:", 1).remove(folder).remove("</div>");
    }
    QByteArray Usable() const {
        QByteArrayList names;
        for (const char* name :
             {"cmdStart", "cmdPause", "cmdContinue", "cmdIgnore", "cboHelp", "txtOdf", "dirDirectory"})
            if (In<QWidget>(name).isVisible() && In<QWidget>(name).isEnabled()) names << name;
        return names.join(' ');
    }
    /// Presses the button, and Pause after `count` files of the run.
    void PressAndPause(const char* name, int count) const {
        QTimer timer;
        timer.callOnTimeout([&] {
            if (--count == 0) Press("cmdPause");
        });
        timer.start(0);
        Press(name);
    }
};

/// What is usable in each state.
constexpr char kIdle[] = "cmdStart cboHelp txtOdf dirDirectory";
constexpr char kPaused[] = "cmdContinue";
constexpr char kStopped[] = "cmdContinue cmdIgnore txtOdf";

TEST_F(OdfChecker, PausesAndClosesBetweenFiles) {
    const QStringList paths{"other/races", "ships/a", "ships/b", "ships/c", "weapons/pulse/d"};
    for (const QString& path : paths)
        Write("game/odf/" + path + ".odf", "// unused\r\nx");
    Write("game/odf/ships/note.txt", "x");
    const auto rewritten = [&] {
        return std::ranges::count_if(
            paths, [&](auto& path) { return Read("game/odf/" + path + ".odf") == "x\r\n"; });
    };
    Open();
    EXPECT_TRUE(In<QCheckBox>("chkRace").isChecked());
    Press("chkRemoveUnusedLines");
    PressAndPause("cmdStart", 2);
    EXPECT_EQ(Usable(), kPaused);
    EXPECT_TRUE(Text().toPlainText().startsWith("Please wait while"));
    EXPECT_EQ(Caption("lblStatus"), " 1\n 6");
    EXPECT_EQ(In<QProgressBar>("pgbProgress").value(), 16);
    PressAndPause("cmdContinue", 3); // the second file again, and the last one of its folder
    EXPECT_EQ(Caption("lblStatus"), " 3\n 6");
    EXPECT_EQ(rewritten(), 4);

    QTimer::singleShot(0, opened, [this] {
        opened->close();
        Item("menuModOpenOdfChecker").trigger(); // and opened again: it stays, and so does the run
        Press("cmdPause");
    });
    Press("cmdContinue");
    EXPECT_EQ(Usable(), kPaused);
    QTimer::singleShot(0, opened, &QWidget::close);
    Press("cmdContinue");
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_EQ(rewritten(), 4) << "closed after one file";
    EXPECT_EQ(Outcome(), "The check was ended after 4 of 5 files, no error: 4 rid of unused lines.");
    Open();
    Press("cmdStart");
    EXPECT_EQ(Usable(), kIdle);
    EXPECT_TRUE(Text().toPlainText().startsWith("Select an odf folder and then click\non the start button"));
    EXPECT_EQ(rewritten(), 5);
    Press("cmdStart");
    EXPECT_EQ(Outcome(), "5 files checked, no error.");
}

TEST_F(OdfChecker, AnswersUnavailableOptionsAndShowsHelp) {
    test::AnswerBoxes boxes;
    Open();
    EXPECT_EQ(QDir::fromNativeSeparators(In<QTreeView>("dirDirectory").property("path").toString()),
              Path("program"))
        << "no odf folder";
    EXPECT_EQ(Usable(), "cboHelp txtOdf dirDirectory");
    MakeFolder("game/odf");
    Item("menuModOpenOdfChecker").trigger();
    EXPECT_EQ(Usable(), kIdle) << "opened again, it looks for the game's folder again";
    for (const char* option : {"chkOnlyModNew", "chkWeaponHardpoints"}) {
        Press(option);
        EXPECT_FALSE(In<QCheckBox>(option).isChecked()) << option;
        EXPECT_EQ(boxes.Seen().back().text, "This will be available in the next version of Quillbay");
    }
    EXPECT_EQ(boxes.Seen().size(), 2U);
    MakeFolder("other/ODF");
    In<QTreeView>("dirDirectory").setProperty("path", Path("other/ODF"));
    EXPECT_EQ(Usable(), kIdle) << "in any letter case";
    In<QComboBox>("cboHelp").setCurrentText("Missing v. tooltips");
    EXPECT_EQ(Caption("lblHelp"), "Read 'Missing tooltips'.");
}

TEST_F(OdfChecker, KeepsAnEditedTextUntilItIsSavedOrDiscarded) {
    const QString path("game/odf/other/a.odf");
    Write(path, "\"");
    Make({"game/HLVX", "game/unsupportedextension_mapedit", "dosdevices/"});
    QFile::link(Path("."), Path("dosdevices/g:"));
    test::AnswerBoxes boxes;
    Open();
    Press("chkMsgBoxes");
    Press("cmdStart");
    Text().setPlainText(QString("\u2603"));
    Press("cmdContinue");
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.contains(QString("\u2603")));

    MakeFolder("game/T2QB Launch T2.bat"); // so that nothing can be launched
    Text().setPlainText("saved\"");
    boxes.Then(QMessageBox::Save).Then(QMessageBox::Ok);
    Item("menuManagerLaunchT2").trigger();
    EXPECT_EQ(Read(path), "saved\"\r\n");
    Text().setPlainText("again\"");
    Press("cmdContinue");
    EXPECT_EQ(Read(path), "again\"\r\n");
    ASSERT_EQ(boxes.Seen().size(), 3U) << "nobody else has changed the file";

    Text().setPlainText("mine");
    Write(path, "put back by an uninstallation");
    boxes.Then(QMessageBox::No);
    Press("cmdIgnore");
    EXPECT_EQ(Read(path), "put back by an uninstallation");
    QFile::remove(Path(path));
    MakeFolder(path); // cannot be written
    boxes.Then(QMessageBox::Save, [](QMessageBox& box) {
        EXPECT_TRUE(static_cast<QPushButton*>(box.button(QMessageBox::Save))->isDefault());
    });
    boxes.Then(QMessageBox::Yes).Then(QMessageBox::Ok).Then(QMessageBox::Cancel);
    opened->close();
    opened->close();
    ASSERT_EQ(boxes.Seen().size(), 8U);
    EXPECT_EQ(boxes.Seen()[6].title, "Error!");
    QDir().rmdir(Path("game/T2QB Launch T2.bat"));
    boxes.Then(QMessageBox::Cancel).Then(QMessageBox::Cancel).ThenType("map").Then(QMessageBox::Cancel);
    window->close();
    Item("menuManagerLaunchT2").trigger();
    Item("menuManagerLaunchMapEditor").trigger();
    EXPECT_TRUE(window->isVisible() && shell.opened.empty()) << "the text is not given up with the program";
    EXPECT_EQ(Usable(), kStopped);
    EXPECT_EQ(Text().toPlainText(), "mine");
    boxes.Then(QMessageBox::Discard);
    opened->close();
    ASSERT_TRUE(WaitUntilClosed());

    QDir().rmdir(Path(path));
    for (const QByteArray& large :
         {QByteArray("x\r\n").repeated(1'400'000) + '"', QByteArray(270'000, '"') + '"'}) {
        Write(path, large);
        Open();
        Press("cmdStart");
        Press("cmdContinue");
        EXPECT_EQ(Usable(), kStopped);
        EXPECT_LT(Text().toPlainText().size(), 1'000);
        Press("cmdIgnore");
        EXPECT_EQ(Usable(), kIdle);
        EXPECT_EQ(Read(path), large);
    }
}

} // namespace
} // namespace quillbay
