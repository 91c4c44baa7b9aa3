#include "catalogue/FileList.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

class FinderWindow : public SelectorFixture {
protected:
    FinderWindow() {
        QLocale::setDefault(QLocale(QLocale::German));
        for (const char* file : {"game/AdmiralsLog/a.odf", "game/AdmiralsLog/b.odf", "game/odf/c.odf"})
            Write(file, "123");
        RecompileFileList(*disk, Path("game").toStdString(), Path("program").toStdString());
    }
    ~FinderWindow() override { QLocale::setDefault(QLocale::system()); }

    /// Two new and two modified files, in the first folder and in a later one.
    const QStringList new_{R"(AdmiralsLog\new.odf)", R"(odf\new.odf)"};
    const QStringList modified_{R"(AdmiralsLog\a.odf)", R"(odf\c.odf)"};
    void ChangeGame() const {
        for (const QString& file : new_ + modified_)
            Write("game/" + QString(file).replace('\\', '/'), "12");
    }
    void Open() {
        if (!window && !Start()) ADD_FAILURE();
        SelectorFixture::Open("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
        list_ = &In<QListWidget>("lstList");
        path_ = &In<QLineEdit>("txtPath");
    }
    bool CloseAndWait() const {
        opened->close();
        return WaitFor([&] { return !Mark().isChecked(); });
    }
    QAction& Mark() const { return *Control<QMenu>("menuManagerModFiles").menuAction(); }
    void Click(const char* name) const { QTest::mouseClick(&In<QWidget>(name), Qt::LeftButton); }
    bool IsEnabled(const char* name) const { return In<QWidget>(name).isEnabled(); }
    /// What is visible of the controls that come and go.
    QByteArray Shown() const {
        QByteArrayList names;
        for (const char* name : {"lstList", "pgbStatus", "cmdCancel", "txtPath", "cmdBrowse", "cmdStart",
                                 "lblGrandTotal", "pgbFileStatus"})
            if (In<QWidget>(name).isVisible()) names << name;
        return names.join(' ');
    }
    void Scan() const { Press("cmdStart"); }
    /// Runs `act` during the scan, in the second pass or at once, then waits for the end of the scan.
    void ScanAnd(const std::function<void()>& act, bool inSecondPass = false) const {
        QTimer timer;
        timer.callOnTimeout([&] {
            if (inSecondPass && !Shown().contains("lblGrandTotal")) return;
            timer.stop();
            act();
        });
        timer.start(0);
        Scan();
        EXPECT_FALSE(timer.isActive()) << "nothing was done during the scan";
    }
    /// The rows; those without a check mark in brackets.
    QStringList Listed() const {
        QStringList rows;
        for (int row = 0; row < list_->count(); ++row) {
            const QString text = list_->item(row)->text();
            rows += list_->item(row)->checkState() == Qt::Checked ? text : '(' + text + ')';
        }
        return rows;
    }
    void Uncheck(int row) const { list_->item(row)->setCheckState(Qt::Unchecked); }

    QListWidget* list_ = nullptr;
    QLineEdit* path_ = nullptr;
};

TEST_F(FinderWindow, HasThreeLayouts) {
    Write("game/odf/large.odf", QByteArray(2'000'000, 'x'));
    Open();
    EXPECT_TRUE(Mark().isChecked() && !Item("menuManagerFindModifiedFiles").isChecked());
    EXPECT_EQ(Caption("lblNumberOfFiles"), "Normal number of files: 4");
    EXPECT_EQ(Caption("lblNormalSize"), "Normal total size: 13 bytes");
    EXPECT_EQ(Caption("lblCurNumOfFiles"), "5");
    EXPECT_EQ(Caption("lblCurTotalSize"), "Current total size: 2.000.013 bytes");
    EXPECT_EQ(Caption("lblExtraFiles"), "Total new files: -6.831");
    EXPECT_EQ(Shown(), "cmdStart lblGrandTotal");
    const QSize compact = opened->size();
    QSize scanning;
    ScanAnd([&] {
        scanning = opened->size();
        EXPECT_EQ(Shown(), "lstList pgbStatus cmdCancel");
        EXPECT_TRUE(Caption("lblProgress").endsWith(" out of 10")) << qPrintable(Caption("lblProgress"));
    });
    EXPECT_EQ(Caption("lblExtraFiles"), "Total new files found: 1");
    EXPECT_EQ(Caption("lblProgress"), "Path:");
    EXPECT_EQ(In<QPushButton>("cmdStart").text(), "Re&scan");
    EXPECT_TRUE(In<QPushButton>("cmdCopy").isDefault());
    EXPECT_EQ(Shown(), "lstList txtPath cmdBrowse cmdStart lblGrandTotal");
    EXPECT_GT(scanning.width(), compact.width());
    EXPECT_EQ(opened->size(), QSize(scanning.width(), compact.height()));

    ASSERT_TRUE(CloseAndWait());
    Open();
    EXPECT_EQ(opened->size(), compact);
    EXPECT_EQ(In<QPushButton>("cmdStart").text(), "&Scan");
}

TEST_F(FinderWindow, ListFollowsTheViewBoxes) {
    Open();
    ChangeGame();
    // At every moment of a scan, too. An Enter key that is still held down does not cancel it.
    ScanAnd([&] {
        QTest::keyClick(opened->focusWidget(), Qt::Key_Return);
        Click("chkNew");
        EXPECT_EQ(Listed(), QStringList());
    });
    EXPECT_EQ(Listed(), modified_);
    Click("chkModified");
    Scan();
    EXPECT_EQ(Listed(), QStringList());
    ScanAnd([&] { Click("chkNew"); }, true);
    EXPECT_EQ(Listed(), new_);
    Uncheck(0);
    Click("chkModified");
    EXPECT_EQ(Listed(), new_ + modified_);
    // A range is taken with Shift, and checked or unchecked as a whole.
    path_->setText(Path("game"));
    list_->setCurrentRow(0);
    for (int row = 0; row < 3; ++row)
        QTest::keyClick(list_, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list_, Qt::Key_Space);
    EXPECT_EQ(Listed().filter("(").size(), 4);
    EXPECT_FALSE(IsEnabled("cmdCopy"));
    QTest::keyClick(list_, Qt::Key_Space);
    EXPECT_EQ(Listed(), new_ + modified_);
    EXPECT_TRUE(IsEnabled("cmdCopy"));
    Click("chkModified");

    for (int file = 0; file < 300; ++file)
        Write(QStringLiteral("game/odf/%1.new").arg(file), "");
    Scan();
    EXPECT_EQ(list_->count(), 302);
    list_->verticalScrollBar()->setValue(200);
    const QString top = list_->itemAt(5, 5)->text();
    Click("chkModified");
    EXPECT_EQ(list_->itemAt(5, 5)->text(), top);
}

TEST_F(FinderWindow, CancelKeepsWhatWasFoundAndClosingEndsTheScan) {
    Open();
    ChangeGame();
    for (const bool inSecondPass : {false, true}) {
        ScanAnd(
            [&] {
                path_->setText(Path("game"));
                if (list_->count() > 0) list_->item(0)->setCheckState(Qt::Checked);
                EXPECT_FALSE(IsEnabled("cmdDelete"));
                Click("cmdCancel");
            },
            inSecondPass);
        EXPECT_EQ(Listed(), inSecondPass ? new_ + modified_.mid(0, 1) : new_.mid(0, 1));
    }
    EXPECT_EQ(Caption("lblGrandTotal"), "Total modded files: 3");

    // Closed, opened and scanned anew from inside the scan: the old one must leave that alone.
    ScanAnd([&] {
        ASSERT_TRUE(CloseAndWait());
        EXPECT_FALSE(opened->isVisible());
        Open();
        EXPECT_EQ(Caption("lblProgress"), "");
        Scan();
        EXPECT_EQ(Listed(), new_ + modified_);
        Uncheck(0);
    });
    EXPECT_EQ(Listed().front(), '(' + new_.front() + ')');
    ScanAnd([&] { Item("menuQuit").trigger(); });
    EXPECT_FALSE(opened->isVisible());
    EXPECT_TRUE(In<QPushButton>("cmdStart").isHidden()) << "the scan went on to its end";
}

TEST_F(FinderWindow, CopiesMovesAndDeletesInTheChosenFolder) {
    ChangeGame();
    Write("target/file", "");
    Open();
    Scan();
    for (const QString& none : {QString(""), QStringLiteral("."), Path("none"), Path("target/file")}) {
        path_->setText(none);
        EXPECT_FALSE(IsEnabled("cmdCopy")) << qPrintable(none);
        EXPECT_TRUE(In<QPushButton>("cmdDelete").toolTip().contains("existing folder"));
    }
    for (const char* chosen : {"target/file", "", "target"}) {
        QTimer::singleShot(0, opened, [&] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            dialog.selectFile(Path(chosen));
            dialog.findChild<QDialogButtonBox*>()
                ->button(*chosen ? QDialogButtonBox::Open : QDialogButtonBox::Cancel)
                ->click();
        });
        Click("cmdBrowse");
        EXPECT_EQ(path_->text(), *chosen ? QDir::toNativeSeparators(Path(chosen)) : "");
    }
    for (const bool isEmpty : {true, false}) {
        for (const char* view : {"chkNew", "chkModified"})
            Click(view);
        EXPECT_TRUE(IsEnabled("cmdCopy")) << "an empty view changes no button";
        EXPECT_EQ(Listed().isEmpty(), isEmpty);
    }
    Uncheck(0);
    Uncheck(1);
    Click("lblInvert");
    EXPECT_EQ(Listed().filter("("), (QStringList{R"((AdmiralsLog\a.odf))", R"((odf\c.odf))"}));
    QTest::keyClick(&In<QWidget>("lblInvert"), Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(list_, &held);
    EXPECT_FALSE(Exists("target/odf")) << "by a key that is held down";
    Click("cmdCopy");
    EXPECT_EQ(path_->text(), QDir::toNativeSeparators(Path("target")) + "\\");
    EXPECT_TRUE(Exists("target/odf/c.odf") && !Exists("target/odf/new.odf") && !Exists("target/bitmaps"));

    Click("lblInvert");
    list_->item(3)->setCheckState(Qt::Checked);
    QFile::remove(Path("game/AdmiralsLog/new.odf"));
    AnswerBoxes boxes;
    In<QWidget>("cmdMove").setFocus();
    QTest::keyClick(opened->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Control<QLabel>("lblOutcome").text(),
              "Find Modified/New files: 1 file moved, 1 not moved, 1 kept because the destination has them.");
    EXPECT_EQ(Caption("lblFinderOutcome"), Control<QLabel>("lblOutcome").text());
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.startsWith("1 file was not moved:\n\nAdmiralsLog\\new.odf\n"));
    EXPECT_TRUE(Exists("target/odf/new.odf") && !Exists("game/odf/new.odf") && Exists("game/odf/c.odf"));
    EXPECT_FALSE(IsEnabled("cmdMove"));
    Scan();
    EXPECT_FALSE(IsEnabled("cmdMove"));

    // What the list shows is deleted, checked or not.
    ASSERT_TRUE(CloseAndWait());
    ChangeGame();
    Open();
    Scan();
    path_->setText(Path("target"));
    Click("chkModified");
    Uncheck(0);
    boxes.Then(QMessageBox::No,
               [](auto& box) { EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No)); });
    boxes.Then(QMessageBox::Yes);
    for (const bool isThere : {true, false}) {
        Click("cmdDelete");
        for (const char* file : {"game/AdmiralsLog/new.odf", "game/odf/new.odf"})
            EXPECT_EQ(Exists(file), isThere) << file;
    }
    EXPECT_TRUE(Exists("game/odf/c.odf"));
    EXPECT_TRUE(!IsEnabled("chkNew") && IsEnabled("chkModified") && !IsEnabled("cmdDelete"));
}

TEST_F(FinderWindow, TakesNoOriginalThatCameBackAfterTheScan) {
    Write("program/mods/Mod/odf/c.odf", "mod's");
    MakeFolder("target");
    ASSERT_TRUE(Start());
    for (const char* action : {"cmdMove", "cmdDelete"}) {
        SCOPED_TRACE(action);
        Write("game/odf/new", "x");
        QString details;
        AnswerBoxes boxes;
        boxes.Then(QMessageBox::Yes).Then(QMessageBox::Yes);
        boxes.Then(QMessageBox::Yes, [&](auto& box) { details = box.detailedText(); });
        auto& install = Control<QPushButton>("cmdInstallMod");
        install.setFocus();
        QTest::keyClick(&install, Qt::Key_Return);
        Open();
        Scan();
        ASSERT_EQ(Listed(), (QStringList{R"(odf\new)", R"(odf\c.odf)"}));
        Control<QPushButton>("cmdUninstallMod").click();
        path_->setText(Path("target"));
        Click(action);
        EXPECT_EQ(Read("game/odf/c.odf"), "123");
        EXPECT_FALSE(Exists("game/odf/new"));
        ASSERT_EQ(boxes.Seen().size(), 3U);
        EXPECT_TRUE(
            (boxes.Seen()[2].text + boxes.Seen()[2].informative)
                .endsWith("1 file is no longer new or modified and stays in the game:\n\nodf\\c.odf"));
        EXPECT_EQ(details, action == QLatin1String("cmdMove") ? "" : "odf\\new\n");
        ASSERT_TRUE(CloseAndWait());
    }
}

} // namespace
} // namespace quillbay::test
