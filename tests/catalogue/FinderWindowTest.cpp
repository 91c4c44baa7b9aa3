#include "catalogue/FileListWriter.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QtTest>
#include <QtWidgets>

namespace quillbay {
namespace {

bool Always() { return true; }

class FinderWindow : public test::SelectorFixture {
protected:
    FinderWindow() {
        QLocale::setDefault(QLocale(QLocale::German));
        for (const char* file : {"game/AdmiralsLog/a.odf", "game/AdmiralsLog/b.odf", "game/odf/c.odf"})
            Write(file, "123");
        RecompileFileList(*disk, Path("game").toStdString(), Path("program").toStdString());
        Write("target/file", "");
    }
    ~FinderWindow() override { QLocale::setDefault(QLocale::system()); }

    /// Two new and two modified files, in the first folder and in a later one.
    void ChangeGame() const {
        for (const QString& file : new_ + modified_)
            Write("game/" + QString(file).replace('\\', '/'), "12");
    }
    const QStringList new_{R"(AdmiralsLog\new.odf)", R"(odf\new.odf)"};
    const QStringList modified_{R"(AdmiralsLog\a.odf)", R"(odf\c.odf)"};

    void Open() {
        if (!window && !Start()) ADD_FAILURE();
        finder_ = &OpenWindow("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
        list_ = &In<QListWidget>("lstList");
        path_ = &In<QLineEdit>("txtPath");
    }
    template <typename T>
    T& In(const char* name) const {
        return Control<T>(*finder_, name);
    }
    QString Text(const char* label) const { return In<QLabel>(label).text(); }
    QAbstractButton& Button(const char* name) const { return In<QAbstractButton>(name); }
    void Click(const char* name) const { QTest::mouseClick(&In<QWidget>(name), Qt::LeftButton); }
    void ExpectShown(bool shown, std::initializer_list<const char*> names) const {
        for (const char* name : names)
            EXPECT_EQ(In<QWidget>(name).isVisible(), shown) << name;
    }
    void Scan() const { Button("cmdStart").click(); }
    void ScanChangedGame() {
        ChangeGame();
        Open();
        Scan();
        ASSERT_EQ(Listed(), new_ + modified_);
    }
    /// Runs `act` during the scan as soon as `due`, then waits for the end of the scan.
    void ScanAnd(const std::function<bool()>& due, const std::function<void()>& act) const {
        QTimer timer;
        timer.callOnTimeout([&] {
            if (!due()) return;
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
    QAction& Mark() const { return *Control<QMenu>("menuManagerModFiles").menuAction(); }
    bool CloseAndWait() const {
        finder_->close();
        return test::WaitFor([&] { return !Mark().isChecked(); });
    }

    QWidget* finder_ = nullptr;
    QListWidget* list_ = nullptr;
    QLineEdit* path_ = nullptr;
};

TEST_F(FinderWindow, HasThreeLayouts) {
    Write("game/odf/large.odf", QByteArray(2'000'000, 'x'));
    Open();
    EXPECT_TRUE(Mark().isChecked());
    EXPECT_FALSE(Item("menuManagerFindModifiedFiles").isChecked());
    EXPECT_EQ(Text("lblNumberOfFiles"), "Normal number of files: 4");
    EXPECT_EQ(Text("lblNormalSize"), "Normal total size: 13 bytes");
    EXPECT_EQ(Text("lblCurNumOfFiles"), "5");
    EXPECT_EQ(Text("lblCurTotalSize"), "Current total size: 2.000.013 bytes");
    EXPECT_EQ(Text("lblExtraFiles"), "Total new files: -6.831");
    const QSize compact = finder_->size();
    ExpectShown(false, {"lstList", "pgbStatus", "txtPath", "cmdBrowse", "cmdCancel", "pgbFileStatus"});

    QSize scanning;
    ScanAnd(Always, [&] {
        scanning = finder_->size();
        ExpectShown(true, {"lstList", "pgbStatus", "cmdCancel"});
        ExpectShown(false, {"txtPath", "cmdStart", "lblGrandTotal"});
        EXPECT_TRUE(Text("lblProgress").endsWith(" out of 10")) << qPrintable(Text("lblProgress"));
    });
    EXPECT_EQ(Text("lblExtraFiles"), "Total new files found: 1");
    EXPECT_EQ(Text("lblProgress"), "Path:");
    EXPECT_EQ(Button("cmdStart").text(), "Re&scan");
    EXPECT_TRUE(In<QPushButton>("cmdCopy").isDefault());
    ExpectShown(true, {"txtPath", "cmdBrowse", "cmdStart", "lblGrandTotal"});
    ExpectShown(false, {"cmdCancel", "pgbStatus"});
    EXPECT_GT(scanning.width(), compact.width());
    EXPECT_EQ(finder_->size(), QSize(scanning.width(), compact.height()));

    ASSERT_TRUE(CloseAndWait());
    Open();
    EXPECT_EQ(finder_->size(), compact);
    EXPECT_EQ(Button("cmdStart").text(), "&Scan");
}

TEST_F(FinderWindow, ListFollowsTheViewBoxes) {
    Open();
    ChangeGame();
    // A click counts at once, but the end of the scan lists everything. An Enter key that is still held down
    // does not cancel it.
    ScanAnd(Always, [&] {
        QTest::keyClick(finder_->focusWidget(), Qt::Key_Return);
        Click("chkNew");
        EXPECT_EQ(Listed(), QStringList());
    });
    EXPECT_EQ(Listed(), new_ + modified_);
    list_->item(0)->setCheckState(Qt::Unchecked);
    Click("chkModified");
    EXPECT_EQ(Listed(), QStringList());
    Click("chkNew");
    EXPECT_EQ(Listed(), new_);

    for (int file = 0; file < 300; ++file)
        Write(QStringLiteral("game/odf/%1.new").arg(file), "");
    Scan();
    EXPECT_EQ(list_->count(), 304);
    list_->verticalScrollBar()->setValue(200);
    const QString top = list_->itemAt(5, 5)->text();
    Click("chkModified");
    EXPECT_EQ(list_->itemAt(5, 5)->text(), top);
}

TEST_F(FinderWindow, CancelKeepsWhatWasFoundAndClosingEndsTheScan) {
    Open();
    ChangeGame();
    const auto cancel = [&] { Button("cmdCancel").click(); };
    ScanAnd(Always, cancel);
    EXPECT_EQ(Listed(), new_.mid(0, 1));
    ScanAnd([&] { return In<QWidget>("lblGrandTotal").isVisible(); }, cancel);
    EXPECT_EQ(Listed(), new_ + modified_.mid(0, 1));
    EXPECT_EQ(Text("lblGrandTotal"), "Total modded files: 3");

    // Closed, opened and scanned anew from inside the scan: the old one must leave that alone.
    ScanAnd(Always, [&] {
        ASSERT_TRUE(CloseAndWait());
        EXPECT_FALSE(finder_->isVisible());
        Open();
        EXPECT_EQ(Text("lblProgress"), "");
        Scan();
        EXPECT_EQ(Listed(), new_ + modified_);
        list_->item(0)->setCheckState(Qt::Unchecked);
    });
    EXPECT_EQ(Listed().front(), '(' + new_.front() + ')');
    ScanAnd(Always, [&] { window->EndProgram(); });
    EXPECT_FALSE(finder_->isVisible());
    EXPECT_TRUE(Button("cmdStart").isHidden()) << "the scan went on to its end";
}

TEST_F(FinderWindow, RecompileAsksAndReports) {
    const QByteArray before = Read("program/FileList.txt");
    Open();
    ChangeGame();
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes).Then(QMessageBox::Ok);
    QAction& recompile = Item("menuManagerModFilesRecompile");
    recompile.trigger();
    EXPECT_EQ(Read("program/FileList.txt"), before);
    recompile.trigger();
    const QByteArray after = Read("program/FileList.txt");
    EXPECT_TRUE(after.contains("\r\nnew.odf;2;"));
    window->GameDirectory = Path("nowhere").toStdString();
    boxes.Then(QMessageBox::Yes).Then(QMessageBox::Ok);
    recompile.trigger();
    EXPECT_EQ(Read("program/FileList.txt"), after);
    // Without a catalogue every file would count as new.
    ASSERT_TRUE(QFile::remove(Path("program/FileList.txt")));
    Scan();
    ExpectShown(false, {"lstList"});

    ASSERT_EQ(boxes.Seen().size(), 6U);
    EXPECT_EQ(boxes.Seen()[2].text, "Compilation complete.");
    for (const std::size_t refusal : {4U, 5U})
        EXPECT_EQ(boxes.Seen()[refusal].title, "Error!");
}

TEST_F(FinderWindow, CopiesAndMovesTheCheckedFiles) {
    ScanChangedGame();
    for (const QString& none : {QString(""), QStringLiteral("target"), Path("none"), Path("target/file")}) {
        path_->setText(none);
        EXPECT_FALSE(Button("cmdCopy").isEnabled()) << qPrintable(none);
    }
    path_->setText(Path("target"));
    for (const int row : {0, 1})
        list_->item(row)->setCheckState(Qt::Unchecked);
    Click("lblInvert");
    EXPECT_EQ(Listed().filter("("), (QStringList{R"((AdmiralsLog\a.odf))", R"((odf\c.odf))"}));
    QTest::keyClick(&In<QWidget>("lblInvert"), Qt::Key_Space);
    Click("cmdCopy");
    EXPECT_EQ(path_->text(), Path("target") + "\\");
    EXPECT_TRUE(Exists("target/odf/c.odf") && !Exists("target/odf/new.odf") && !Exists("target/bitmaps"));

    Click("lblInvert");
    list_->item(3)->setCheckState(Qt::Checked);
    QFile::remove(Path("game/AdmiralsLog/new.odf"));
    test::AnswerBoxes boxes;
    Click("cmdMove");
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.startsWith("1 file was not moved:\n\nAdmiralsLog\\new.odf\n"));
    EXPECT_TRUE(Exists("target/odf/new.odf") && !Exists("game/odf/new.odf") && Exists("game/odf/c.odf"));
    EXPECT_FALSE(Button("cmdMove").isEnabled());
    Scan();
    EXPECT_FALSE(Button("cmdMove").isEnabled());
}

TEST_F(FinderWindow, DeletesWhatTheListShows) {
    ScanChangedGame();
    path_->setText(Path("target"));
    Click("chkModified");
    list_->item(0)->setCheckState(Qt::Unchecked);
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes);
    for (const bool isThere : {true, false}) {
        Click("cmdDelete");
        for (const char* file : {"game/AdmiralsLog/new.odf", "game/odf/new.odf"})
            EXPECT_EQ(Exists(file), isThere) << file;
    }
    EXPECT_TRUE(Exists("game/odf/c.odf"));
    EXPECT_TRUE(!Button("chkNew").isEnabled() && Button("chkModified").isEnabled());
    EXPECT_FALSE(Button("cmdDelete").isEnabled());
}

TEST_F(FinderWindow, TakesNoOriginalThatCameBackAfterTheScan) {
    Write("program/mods/Mod/odf/c.odf", "mod's");
    ASSERT_TRUE(Start());
    for (const char* action : {"cmdMove", "cmdDelete"}) {
        SCOPED_TRACE(action);
        Write("game/odf/new", "x");
        QString details;
        test::AnswerBoxes boxes;
        boxes.Then(QMessageBox::Yes).Then(QMessageBox::Yes);
        boxes.Then(QMessageBox::Yes, [&](auto& box) { details = box.detailedText(); });
        Control<QPushButton>("cmdInstallMod").click();
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

TEST_F(FinderWindow, BrowsesForAFolderOrAFile) {
    ScanChangedGame();
    for (const char* chosen : {"target", "target/file", ""}) {
        QTimer::singleShot(0, finder_, [&] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            dialog.selectFile(Path(chosen));
            dialog.findChild<QDialogButtonBox*>()
                ->button(*chosen ? QDialogButtonBox::Open : QDialogButtonBox::Cancel)
                ->click();
        });
        Click("cmdBrowse");
        EXPECT_EQ(path_->text(), *chosen ? QDir::toNativeSeparators(Path(chosen)) : "");
    }
}

} // namespace
} // namespace quillbay
