#include "common/window/FolderListBox.h"
#include "shell/window/frmChangeT2Dir.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

class Chooser : public SelectorFixture {
protected:
    Chooser() { MakeFolder("Other Copy"); }
    ~Chooser() override {
        qunsetenv("WINEPREFIX");
        qputenv("HOME", home);
    }

    void Open() {
        ASSERT_TRUE(window || Start());
        SelectorFixture::Open("modChangeT2Directory", "frmChangeT2Dir");
    }
    /// Starts without a game, which is searched in `prefix`, and does the action as soon as the chooser shows
    /// the text.
    bool StartWithoutAGame(const QString& text, const std::function<void()>& action) {
        qputenv("WINEPREFIX", Path("prefix").toUtf8());
        MakeFolder("prefix/drive_c");
        registry.path = Path("gone").toStdString();
        boxes.Then(QMessageBox::Ok, [this](QMessageBox&) {
            EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "(T2 folder not found)");
            EXPECT_EQ(main->GameDirectory, kGameNotFound);
        });
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            opened = qobject_cast<frmChangeT2Dir*>(QApplication::activeModalWidget());
            if (!opened || Typed() != text) return;
            poll.stop();
            action();
        });
        poll.start(0);
        return Start();
    }
    QString Native(const QString& relative) const { return QDir::toNativeSeparators(Path(relative)); }
    QLineEdit& Box() const { return In<QLineEdit>("txtDir"); }
    QString Typed() const { return Box().text(); }
    FolderListBox& List() const { return In<FolderListBox>("dirListBox"); }
    bool CanApply() const { return In<QPushButton>("cmdApply").isEnabled(); }
    QString Game() const { return QDir::toNativeSeparators(QString::fromStdString(main->GameDirectory)); }

    AnswerBoxes boxes;
    const QByteArray home = qgetenv("HOME");
};

TEST_F(Chooser, ShowsTheCurrentDirectoryAtEveryOpening) {
    Open();
    EXPECT_TRUE(Item("modChangeT2Directory").isChecked());
    EXPECT_TRUE(Caption("lblChangeT2Info").endsWith("PS: It is case sensative."));
    EXPECT_EQ(Caption("lblCurrent").toStdString(), main->GameDirectory);
    EXPECT_EQ(Typed(), Native("game"));

    Box().setText("something else");
    Press("cmdCancel");
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_FALSE(Item("modChangeT2Directory").isChecked());
    Open();
    EXPECT_EQ(Typed(), Native("game")) << "though the list stands where it stood";

    Press("cmdCancel");
    ASSERT_TRUE(WaitUntilClosed());
    main->GameDirectory = Path("gone").toStdString();
    Open();
    EXPECT_EQ(Typed(), Native("program"));
}

TEST_F(Chooser, ApplyStoresAndStaysAndOkStoresAndCloses) {
    Open();
    Box().setText("no folder at all");
    Press("cmdOK");
    QCoreApplication::processEvents(); // closing waits for them
    EXPECT_TRUE(opened->isVisible());
    List().setProperty("path", Path("Other Copy"));
    EXPECT_EQ(Typed(), Native("Other Copy"));
    EXPECT_TRUE(CanApply());
    Box().setText(Path("Other Copy/"));
    QTest::keyClick(&In<QPushButton>("cmdApply"), Qt::Key_Return);
    EXPECT_EQ(Typed(), Path("Other Copy")) << "without the last separator";
    EXPECT_EQ(Game(), Native("Other Copy"));
    EXPECT_EQ(Caption("lblCurrent").toStdString(), main->GameDirectory);
    EXPECT_FALSE(CanApply());
    EXPECT_TRUE(opened->isVisible());

    Box().setText(Path("missing"));
    EXPECT_TRUE(CanApply());
    Press("cmdOK");
    EXPECT_TRUE(WaitUntilClosed());
    EXPECT_EQ(Game(), Native("Other Copy"));
    Open();
    Box().setText(Path("game"));
    QTest::keyClick(&Box(), Qt::Key_Return);
    EXPECT_TRUE(WaitUntilClosed());
    EXPECT_EQ(Game(), Native("game"));
}

TEST_F(Chooser, WithoutAGameEscapeEndsTheProgramButTheCloseBoxDoesNot) {
    const QString sorry = "Unable to find directory. Please locate manually/install Tempest II.";
    qputenv("HOME", Path("Other Copy").toUtf8());
    const QString first = QDir::separator() == '/' ? Path("Other Copy") : Native("program").left(3);
    EXPECT_TRUE(StartWithoutAGame(sorry, [&] { opened->close(); }));
    Open();
    EXPECT_EQ(Typed(), sorry);
    EXPECT_TRUE(opened->isVisible() && opened->isModal());
    EXPECT_EQ(List().path(), first);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] { return Typed() == first; })) << "chosen, though the list stands there already";
    QTest::keyClick(opened, Qt::Key_Escape);
    EXPECT_EQ(main->Phase, ProgramPhase::Ended);
}

} // namespace
} // namespace quillbay::test
