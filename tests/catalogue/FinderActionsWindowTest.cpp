#include "catalogue/FileListWriter.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace quillbay {
namespace {

class FinderActionsWindow : public test::SelectorFixture {
protected:
    /// The finder after a scan that found a new file in `odf`, one in the root and a modified one.
    void Scan() {
        Write("program/FileList.txt", "folder = odf\\\r\nchanged;5;1/1/2001 1:00:00 AM\r\n");
        for (const char* file : {"game/odf/changed", "game/odf/new", "target/file"})
            Write(file, "x");
        ASSERT_TRUE(Start());
        OpenAndScan();
        ASSERT_EQ(Checks(), "111");
    }
    void OpenAndScan() {
        opened_ = &OpenWindow("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
        list_ = &Control<QListWidget>(*opened_, "lstList");
        path_ = &Control<QLineEdit>(*opened_, "txtPath");
        Click("cmdStart");
    }
    QWidget& Get(const char* name) const { return Control<QWidget>(*opened_, name); }
    void Click(const char* name) const { QTest::mouseClick(&Get(name), Qt::LeftButton); }
    std::string Checks() const {
        std::string checks;
        for (int row = 0; row < list_->count(); ++row)
            checks += list_->item(row)->checkState() == Qt::Checked ? '1' : '0';
        return checks;
    }

    QWidget* opened_ = nullptr;
    QListWidget* list_ = nullptr;
    QLineEdit* path_ = nullptr;
};

TEST_F(FinderActionsWindow, CopyAndMoveTheCheckedFiles) {
    Scan();
    for (const QString& none : {QString(""), QStringLiteral("target"), Path("none"), Path("target/file")}) {
        path_->setText(none);
        EXPECT_FALSE(Get("cmdCopy").isEnabled()) << qPrintable(none);
    }
    path_->setText(Path("target"));
    for (const char* view : {"chkNew", "chkModified"})
        Click(view);
    EXPECT_TRUE(Get("cmdCopy").isEnabled()) << "an empty view changes no button";
    for (const char* view : {"chkNew", "chkModified"})
        Click(view);
    list_->item(0)->setCheckState(Qt::Unchecked);
    Click("lblInvert");
    EXPECT_EQ(Checks(), "100");
    QTest::keyClick(&Get("lblInvert"), Qt::Key_Space);
    EXPECT_EQ(Checks(), "011");
    Click("cmdCopy");
    EXPECT_EQ(path_->text(), Path("target") + "\\");
    EXPECT_TRUE(Exists("target/odf/changed") && !Exists("target/odf/new") && !Exists("target/bitmaps"));

    list_->item(0)->setCheckState(Qt::Checked);
    QFile::remove(Path("game/Tempest2.exe"));
    test::AnswerBoxes boxes;
    Click("cmdMove");
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.startsWith("1 file was not moved:\n\nTempest2.exe\n"));
    EXPECT_TRUE(Exists("target/odf/new") && !Exists("game/odf/new") && Exists("game/odf/changed"));
    EXPECT_FALSE(Get("cmdMove").isEnabled());
    Click("cmdStart");
    EXPECT_FALSE(Get("cmdMove").isEnabled());
}

TEST_F(FinderActionsWindow, DeleteWhatTheListShows) {
    Scan();
    path_->setText(Path("target"));
    Click("chkModified");
    list_->item(0)->setCheckState(Qt::Unchecked);
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes);
    Click("cmdDelete");
    EXPECT_TRUE(Exists("game/odf/new"));
    Click("cmdDelete");
    EXPECT_TRUE(!Exists("game/odf/new") && !Exists("game/Tempest2.exe") && Exists("game/odf/changed"));
    EXPECT_TRUE(!Get("chkNew").isEnabled() && Get("chkModified").isEnabled());
    EXPECT_FALSE(Get("cmdDelete").isEnabled());
}

TEST_F(FinderActionsWindow, TakeNoOriginalThatCameBackAfterTheScan) {
    Write("game/odf/a.odf", "original");
    Write("program/mods/Mod/odf/a.odf", "mod's");
    RecompileFileList(*disk, Path("game").toStdString(), Path("program").toStdString());
    MakeFolder("target");
    ASSERT_TRUE(Start());
    for (const char* action : {"cmdMove", "cmdDelete"}) {
        Write("game/odf/new", "x");
        QString details;
        test::AnswerBoxes boxes;
        boxes.Then(QMessageBox::Yes).Then(QMessageBox::Yes);
        boxes.Then(QMessageBox::Yes, [&](auto& box) { details = box.detailedText(); });
        Control<QPushButton>("cmdInstallMod").click();
        ASSERT_EQ(Read("game/odf/a.odf"), "mod's");
        OpenAndScan();
        ASSERT_EQ(Checks(), "11");
        Control<QPushButton>("cmdUninstallMod").click();
        path_->setText(Path("target"));
        Click(action);
        EXPECT_EQ(Read("game/odf/a.odf"), "original") << action;
        EXPECT_FALSE(Exists("game/odf/new")) << action;
        ASSERT_EQ(boxes.Seen().size(), 3U);
        EXPECT_TRUE(
            (boxes.Seen()[2].text + boxes.Seen()[2].informative)
                .endsWith("1 file is no longer new or modified and stays in the game:\n\nodf\\a.odf"));
        EXPECT_EQ(details, action == QLatin1String("cmdMove") ? "" : "odf\\new\n");
        opened_->close();
        ASSERT_TRUE(test::WaitFor([&] { return !opened_->isVisible(); }));
    }
}

TEST_F(FinderActionsWindow, BrowseForAFolderOrAFile) {
    Scan();
    for (const char* chosen : {"target", "target/file", ""}) {
        QTimer::singleShot(0, opened_, [&] {
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
