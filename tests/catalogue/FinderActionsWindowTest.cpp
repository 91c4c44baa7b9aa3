#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace quillbay {
namespace {

class FinderActionsWindow : public test::SelectorFixture {
protected:
    /// The finder after a scan that found two new files and a modified one.
    void Scan() {
        Write("program/FileList.txt", "folder = odf\\\r\nchanged;5;1/1/2001 1:00:00 AM\r\n");
        for (const char* file : {"game/odf/changed", "game/odf/new", "target/file"})
            Write(file, "x");
        ASSERT_TRUE(Start());
        opened_ = &OpenWindow("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
        Get<QPushButton>("cmdStart").click();
        ASSERT_EQ(Checks(), "111");
    }
    template <typename T>
    T& Get(const char* name) const {
        return Control<T>(*opened_, name);
    }
    std::string Checks() const {
        std::string checks;
        auto& list = Get<QListWidget>("lstList");
        for (int row = 0; row < list.count(); ++row)
            checks += list.item(row)->checkState() == Qt::Checked ? '1' : '0';
        return checks;
    }
    /// How many of the three actions are enabled.
    int Enabled() const {
        return Get<QPushButton>("cmdCopy").isEnabled() + Get<QPushButton>("cmdMove").isEnabled() +
               Get<QPushButton>("cmdDelete").isEnabled();
    }

    QWidget* opened_ = nullptr;
};

TEST_F(FinderActionsWindow, CopyAndMoveTheCheckedFiles) {
    Scan();
    auto& path = Get<QLineEdit>("txtPath");
    for (const QString& none : {QString(), QStringLiteral("target"), Path("none"), Path("target/file")}) {
        path.setText(none);
        EXPECT_EQ(Enabled(), 0) << qPrintable(none);
    }
    path.setText(Path("target"));
    EXPECT_EQ(Enabled(), 3);
    Get<QListWidget>("lstList").item(0)->setCheckState(Qt::Unchecked);
    QTest::mouseClick(&Get<QLabel>("lblInvert"), Qt::LeftButton);
    EXPECT_EQ(Checks(), "100");
    QTest::keyClick(&Get<QLabel>("lblInvert"), Qt::Key_Space);
    EXPECT_EQ(Checks(), "011");
    Get<QPushButton>("cmdCopy").click();
    EXPECT_EQ(path.text(), Path("target") + "\\");
    EXPECT_EQ(Enabled(), 3);
    EXPECT_TRUE(Exists("target/odf/changed") && !Exists("target/odf/new") && !Exists("target/bitmaps"));

    Get<QListWidget>("lstList").item(0)->setCheckState(Qt::Checked);
    QFile::remove(Path("game/Tempest2.exe"));
    test::AnswerBoxes boxes;
    Get<QPushButton>("cmdMove").click();
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.startsWith("1 file was not moved:\n\nTempest2.exe\n"));
    EXPECT_TRUE(Exists("target/odf/new") && !Exists("game/odf/new") && Exists("game/odf/changed"));
    EXPECT_EQ(Enabled(), 0);
    Get<QPushButton>("cmdStart").click();
    EXPECT_EQ(Enabled(), 0);
}

TEST_F(FinderActionsWindow, DeleteWhatTheListShows) {
    Scan();
    Get<QLineEdit>("txtPath").setText(Path("target"));
    Get<QCheckBox>("chkModified").click();
    Get<QListWidget>("lstList").item(0)->setCheckState(Qt::Unchecked);
    QString details;
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes, [&](auto& box) { details = box.detailedText(); });
    Get<QPushButton>("cmdDelete").click();
    EXPECT_TRUE(Exists("game/odf/new"));
    Get<QPushButton>("cmdDelete").click();
    EXPECT_EQ(details, "odf\\new\nTempest2.exe\n");
    EXPECT_EQ(boxes.Seen().size(), 2U);
    EXPECT_TRUE(!Exists("game/odf/new") && !Exists("game/Tempest2.exe") && Exists("game/odf/changed"));
    EXPECT_TRUE(!Get<QCheckBox>("chkNew").isEnabled() && Get<QCheckBox>("chkModified").isEnabled());
    EXPECT_EQ(Enabled(), 0);
    EXPECT_EQ(Checks(), "01");
}

TEST_F(FinderActionsWindow, BrowseForAFolderOrAFile) {
    Scan();
    for (const char* chosen : {"target", "target/file", ""}) {
        QTimer::singleShot(0, opened_, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            EXPECT_EQ(dialog->directory().path(), Path("game"));
            dialog->selectFile(Path(chosen));
            *chosen ? dialog->accept() : dialog->reject();
        });
        Get<QPushButton>("cmdBrowse").click();
        EXPECT_EQ(Get<QLineEdit>("txtPath").text(), *chosen ? QDir::toNativeSeparators(Path(chosen)) : "");
    }
}

} // namespace
} // namespace quillbay
