#include "catalogue/FileListWriter.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

namespace quillbay {
namespace {

bool Always() { return true; }

class FinderWindow : public test::SelectorFixture {
protected:
    FinderWindow() {
        QLocale::setDefault(QLocale(QLocale::German));
        for (const char* file : {"AdmiralsLog/a.odf", "AdmiralsLog/b.odf", "odf/c.odf"})
            Write(QLatin1String("game/") + file, "123");
        RecompileFileList(*disk, Path("game").toStdString(), Path("program").toStdString());
    }
    ~FinderWindow() override { QLocale::setDefault(QLocale::system()); }

    /// Two new and two modified files, in the first folder and in a later one.
    void ChangeGame() const {
        for (const char* file : {"AdmiralsLog/a.odf", "AdmiralsLog/new.odf", "odf/c.odf", "odf/new.odf"})
            Write(QLatin1String("game/") + file, "12");
    }
    const QStringList new_{R"(AdmiralsLog\new.odf)", R"(odf\new.odf)"};
    const QStringList modified_{R"(AdmiralsLog\a.odf)", R"(odf\c.odf)"};

    void Open() {
        ASSERT_TRUE(Start());
        finder_ = &OpenWindow("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
    }
    template <typename T>
    T& In(const char* name) const {
        return Control<T>(*finder_, name);
    }
    QString Text(const char* label) const { return In<QLabel>(label).text(); }
    bool Shown(const char* name) const { return In<QWidget>(name).isVisible(); }
    void ExpectShown(bool shown, std::initializer_list<const char*> names) const {
        for (const char* name : names)
            EXPECT_EQ(Shown(name), shown) << name;
    }
    void Scan() const { In<QPushButton>("cmdStart").click(); }
    /// Runs `act` during the scan as soon as `due`, then waits for the end of the scan.
    void ScanAnd(const std::function<bool()>& due, const std::function<void()>& act) const {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
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
        const auto& list = In<QListWidget>("lstList");
        QStringList rows;
        for (int row = 0; row < list.count(); ++row) {
            const QString text = list.item(row)->text();
            rows += list.item(row)->checkState() == Qt::Checked ? text : '(' + text + ')';
        }
        return rows;
    }
    QAction& Mark() const { return *Control<QMenu>("menuManagerModFiles").menuAction(); }

    QWidget* finder_ = nullptr;
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
    ASSERT_TRUE(QFile::remove(Path("game/odf/large.odf")));

    QSize scanning;
    ScanAnd(Always, [&] {
        scanning = finder_->size();
        ExpectShown(true, {"lstList", "pgbStatus", "cmdCancel"});
        ExpectShown(false, {"txtPath", "cmdStart", "lblGrandTotal"});
        EXPECT_TRUE(Text("lblProgress").endsWith(" out of 10")) << qPrintable(Text("lblProgress"));
    });
    EXPECT_EQ(Text("lblExtraFiles"), "Total new files found: 0");
    EXPECT_EQ(Text("lblProgress"), "Path:");
    EXPECT_EQ(In<QPushButton>("cmdStart").text(), "Re&scan");
    EXPECT_TRUE(In<QPushButton>("cmdCopy").isDefault());
    ExpectShown(true, {"txtPath", "cmdBrowse", "cmdStart", "lblGrandTotal"});
    ExpectShown(false, {"cmdCancel", "pgbStatus"});
    EXPECT_GT(scanning.width(), compact.width());
    EXPECT_EQ(finder_->size(), QSize(scanning.width(), compact.height()));

    finder_->close();
    ASSERT_TRUE(test::WaitFor([&] { return !Mark().isChecked(); }));
    Item("menuManagerFindModifiedFiles").trigger();
    EXPECT_EQ(finder_->size(), compact);
    EXPECT_EQ(In<QPushButton>("cmdStart").text(), "&Scan");
}

TEST_F(FinderWindow, ListFollowsTheViewBoxes) {
    Open();
    ChangeGame();
    auto& viewNew = In<QCheckBox>("chkNew");
    auto& viewModified = In<QCheckBox>("chkModified");
    // A click counts at once, but the end of the scan lists everything. An Enter key that is still held down
    // does not cancel it.
    ScanAnd(Always, [&] {
        QTest::keyClick(finder_->focusWidget(), Qt::Key_Return);
        viewNew.click();
        EXPECT_EQ(Listed(), QStringList());
    });
    EXPECT_EQ(Listed(), new_ + modified_);
    In<QListWidget>("lstList").item(0)->setCheckState(Qt::Unchecked);
    viewModified.click();
    EXPECT_EQ(Listed(), QStringList());
    viewNew.click();
    EXPECT_EQ(Listed(), new_);

    for (int file = 0; file < 300; ++file)
        Write(QStringLiteral("game/odf/%1.new").arg(file), "");
    Scan();
    EXPECT_EQ(In<QListWidget>("lstList").count(), 304);
    In<QListWidget>("lstList").verticalScrollBar()->setValue(200);
    const QString top = In<QListWidget>("lstList").itemAt(5, 5)->text();
    viewModified.click();
    EXPECT_EQ(In<QListWidget>("lstList").itemAt(5, 5)->text(), top);
}

TEST_F(FinderWindow, CancelKeepsWhatWasFound) {
    Open();
    ChangeGame();
    const auto cancel = [&] { In<QPushButton>("cmdCancel").click(); };
    ScanAnd(Always, cancel);
    EXPECT_EQ(Listed(), new_.mid(0, 1));
    ScanAnd([&] { return Shown("lblGrandTotal"); }, cancel);
    EXPECT_EQ(Listed(), new_ + modified_.mid(0, 1));
    EXPECT_EQ(Text("lblGrandTotal"), "Total modded files: 3");
    Scan();
    EXPECT_EQ(Listed(), new_ + modified_);
}

TEST_F(FinderWindow, ClosingEndsTheScan) {
    Open();
    ChangeGame();
    // Closed, opened and scanned anew from inside the scan: the old one must leave that alone.
    ScanAnd(Always, [&] {
        finder_->close();
        ASSERT_TRUE(test::WaitFor([&] { return !Mark().isChecked(); }));
        EXPECT_FALSE(finder_->isVisible());
        Item("menuManagerFindModifiedFiles").trigger();
        EXPECT_EQ(Text("lblProgress"), "");
        Scan();
        EXPECT_EQ(Listed(), new_ + modified_);
        In<QListWidget>("lstList").item(0)->setCheckState(Qt::Unchecked);
    });
    EXPECT_EQ(Listed().front(), '(' + new_.front() + ')');
    ScanAnd(Always, [&] { window->EndProgram(); });
    EXPECT_FALSE(finder_->isVisible());
    EXPECT_TRUE(In<QPushButton>("cmdStart").isHidden()) << "the scan went on to its end";
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

} // namespace
} // namespace quillbay
