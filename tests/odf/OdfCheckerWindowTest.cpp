#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTextCursor>

namespace quillbay {
namespace {

class OdfChecker : public test::SelectorFixture {
protected:
    QWidget& Open() {
        if (!window && !Start()) ADD_FAILURE();
        checker_ = &OpenWindow("menuModOpenOdfChecker", "frmOdfChecker");
        return *checker_;
    }
    template <typename T>
    T& Get(const char* name) const {
        return Control<T>(*checker_, name);
    }
    void Click(const char* name) const { Get<QPushButton>(name).click(); }
    bool CanClick(const char* name) const {
        return Get<QPushButton>(name).isEnabled() && Get<QPushButton>(name).isVisible();
    }
    QPlainTextEdit& Text() const { return Get<QPlainTextEdit>("txtOdf"); }
    QString Label(const char* name) const { return Get<QLabel>(name).text(); }
    bool IsIdle() const {
        return Get<QComboBox>("cboHelp").isVisible() && CanClick("cmdStart") && !CanClick("cmdPause") &&
               !Get<QProgressBar>("pgbProgress").isVisible() &&
               Text().toPlainText() ==
                   "Select an odf folder and then click\non the start button to begin the check";
    }
    bool IsStopped() const {
        return CanClick("cmdContinue") && CanClick("cmdIgnore") && !CanClick("cmdPause") &&
               !CanClick("cmdStart") && Text().isEnabled() && !Get<QWidget>("dirDirectory").isEnabled();
    }
    /// Presses the button, and Pause after `count` files of the run.
    void ClickAndPause(const char* name, int count) const {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&, seen = 0]() mutable {
            if (++seen == count) Click("cmdPause");
        });
        timer.start(0);
        Click(name);
    }

    QWidget* checker_ = nullptr;
};

TEST_F(OdfChecker, RepairsByContinueAndPassesByIgnore) {
    QByteArray every;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '/' && byte != '"') every += static_cast<char>(byte);
    every += '\0';
    const QByteArray line = "race = \"Ter\nr\xA0n";
    Write("game/odf/ships/a&b.odf", every + "\r" + line + " // \"\r\nx");
    Write("game/odf/ships/b.odf", "one\rweapon1 = \"none\"\rtwo");
    Write("game/odf/stations/c.odf", "tooltip = \"Write Me\"\r\n");
    test::AnswerBoxes boxes;
    Open();
    EXPECT_TRUE(IsIdle());
    EXPECT_FALSE(Get<QCheckBox>("chkRace").isEnabled());
    Click("cmdStart");
    ASSERT_TRUE(IsStopped());
    if (!Label("lblErrorType").endsWith("a&b.odf")) Click("cmdIgnore"); // whatever the folder's order
    EXPECT_EQ(Label("lblErrorType"), "Error type: Incorrect quotation\nFile name: a&b.odf");
    EXPECT_EQ(Text().textCursor().selectedText(), QString("race = \"Ter\u2028r\u00A0n "));
    QTextCursor cursor = Text().textCursor();
    cursor.insertText(cursor.selectedText().replace("r\u00A0n ", "r\u00A0n\" "));
    Click("cmdContinue");
    EXPECT_EQ(Read("game/odf/ships/a&b.odf"), every + "\r\n" + line + "\" // \"\r\nx\r\n");
    if (!Label("lblErrorType").endsWith("c.odf")) Click("cmdIgnore");
    EXPECT_EQ(Read("game/odf/ships/b.odf"), "one\rweapon1 = \"none\"\rtwo") << "not edited, not written";
    ASSERT_EQ(Label("lblErrorType"), "Error type: Unwritten toolip\nFile name: c.odf");
    Text().setPlainText("tooltip = \"\"");
    Click("cmdIgnore");
    EXPECT_EQ(Read("game/odf/stations/c.odf"), "tooltip = \"\"\r\n");
    EXPECT_TRUE(IsIdle()) << "the last file of the last folder";
    EXPECT_EQ(boxes.Seen().size(), 3U);
    EXPECT_EQ(boxes.Seen().back().title, "Tooltip error");
    EXPECT_EQ(boxes.Seen().back().text, "Unwritten tooltip detected. Please repair.");
    EXPECT_EQ(boxes.Seen().back().icon, QMessageBox::Warning);
}

TEST_F(OdfChecker, PausesInTheMiddleAndAtTheLastFileOfAFolder) {
    for (const char* path : {"other/races", "ships/a", "ships/b", "ships/c", "weapons/pulse/d"})
        Write(QString("game/odf/%1.odf").arg(path), "// unused\r\nx");
    Write("game/odf/ships/note.txt", "x");
    Open();
    EXPECT_TRUE(Get<QCheckBox>("chkRace").isChecked());
    Get<QCheckBox>("chkRemoveUnusedLines").setChecked(true);
    ClickAndPause("cmdStart", 2);
    const auto isPaused = [&] {
        return CanClick("cmdContinue") && !CanClick("cmdIgnore") && !CanClick("cmdStart");
    };
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(Label("lblStatus"), " 1\n 6");
    EXPECT_EQ(Get<QProgressBar>("pgbProgress").value(), 16);
    EXPECT_TRUE(Text().toPlainText().startsWith("Please wait while Quillbay checks the odfs\nin the"));
    ClickAndPause("cmdContinue", 3); // the second file again, and the last one of the folder
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(Label("lblStatus"), " 3\n 6");
    EXPECT_EQ(Read("game/odf/weapons/pulse/d.odf"), "// unused\r\nx");
    Click("cmdContinue");
    EXPECT_TRUE(IsIdle());
    for (const char* path : {"ships/a", "ships/c", "weapons/pulse/d"})
        EXPECT_EQ(Read(QString("game/odf/%1.odf").arg(path)), "x\r\n");
}

TEST_F(OdfChecker, OptionsThatAreNotAvailableAndHelp) {
    test::AnswerBoxes boxes;
    Open();
    EXPECT_EQ(Get<QWidget>("dirDirectory").property("path").toString(), Path("program")) << "no odf folder";
    EXPECT_FALSE(CanClick("cmdStart"));
    for (const char* name : {"chkOnlyModNew", "chkWeaponHardpoints", "chkOnlyModNew"}) {
        Get<QCheckBox>(name).click();
        EXPECT_FALSE(Get<QCheckBox>(name).isChecked());
    }
    ASSERT_EQ(boxes.Seen().size(), 3U);
    for (const test::SeenBox& box : boxes.Seen())
        EXPECT_EQ(box.text + box.title, "This will be available in the next version of QuillbayQuillbay");
    auto& help = Get<QComboBox>("cboHelp");
    ASSERT_EQ(help.count(), 12);
    help.setCurrentText("Missing v. tooltips");
    EXPECT_EQ(Label("lblHelp"), "Read 'Missing tooltips'.");
    help.setCurrentText(QString(16, '-'));
    EXPECT_EQ(Label("lblHelp"), "Select something from the dropdown list to get a better description of it.");
}

TEST_F(OdfChecker, KeepsAnEditedTextUntilItIsSavedOrDiscarded) {
    Write("game/odf/other/a.odf", "\"");
    test::AnswerBoxes boxes;
    Open();
    Get<QCheckBox>("chkMsgBoxes").setChecked(false);
    Click("cmdStart");
    ASSERT_TRUE(IsStopped());
    Text().setPlainText(QString("\u2603"));
    Click("cmdContinue");
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen().back().title, "Error!");
    EXPECT_TRUE(boxes.Seen().back().text.contains(QString("\u2603")));

    Text().setPlainText("mine");
    QFile::remove(Path("game/odf/other/a.odf"));
    MakeFolder("game/odf/other/a.odf"); // cannot be written
    Click("cmdIgnore");
    boxes.Then(QMessageBox::Save).Then(QMessageBox::Ok).Then(QMessageBox::Cancel);
    checker_->close();
    checker_->close();
    ASSERT_EQ(boxes.Seen().size(), 5U);
    EXPECT_EQ(boxes.Seen()[3].title, "Error!");
    EXPECT_TRUE(IsStopped());
    EXPECT_EQ(Text().toPlainText(), "mine");
    QDir().rmdir(Path("game/odf/other/a.odf"));
    Write("game/odf/other/a.odf", "\"");

    boxes.Then(QMessageBox::Discard);
    checker_->close();
    ASSERT_TRUE(test::WaitFor([&] { return !checker_->isVisible(); }));
    EXPECT_EQ(Read("game/odf/other/a.odf"), "\"");
    Open();
    EXPECT_TRUE(IsIdle());

    Write("game/odf/other/a.odf", QByteArray(4'200'000, 'x') + '"');
    Click("cmdStart");
    EXPECT_TRUE(IsStopped());
    EXPECT_LT(Text().toPlainText().size(), 1'000);
    Click("cmdContinue");
    EXPECT_TRUE(IsStopped());
    Click("cmdIgnore");
    EXPECT_TRUE(IsIdle());
    EXPECT_EQ(Read("game/odf/other/a.odf").size(), 4'200'001);
}

TEST_F(OdfChecker, ClosingEndsARunAfterTheCurrentFile) {
    for (const char* name : {"a", "b", "c"})
        Write(QString("game/odf/ships/%1.odf").arg(name), "// unused\r\nx");
    Open();
    Get<QCheckBox>("chkRemoveUnusedLines").setChecked(true);
    QTimer::singleShot(0, [&] { checker_->close(); });
    Click("cmdStart");
    ASSERT_TRUE(test::WaitFor([&] { return !Item("menuModOpenOdfChecker").isChecked(); }));
    int rewritten = 0;
    for (const char* name : {"a", "b", "c"})
        rewritten += Read(QString("game/odf/ships/%1.odf").arg(name)) == "x\r\n";
    EXPECT_EQ(rewritten, 1);
    Open();
    EXPECT_TRUE(IsIdle());
}

} // namespace
} // namespace quillbay
