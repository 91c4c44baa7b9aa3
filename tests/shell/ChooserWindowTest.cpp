#include "common/FolderListBox.h"
#include "shell/frmChangeT2Dir.h"
#include "support/AnswerBoxesWindow.h"
#include "support/TestHost.h"
#include "support/TestServices.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

using test::WaitFor;

class Chooser : public testing::Test {
protected:
    ~Chooser() override { qunsetenv("WINEPREFIX"); }

    static QString Native(const std::string& path) {
        return QDir::toNativeSeparators(QString::fromStdString(path));
    }
    template <typename T>
    T* Find(const char* name) {
        return chooser.findChild<T*>(name);
    }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    QString Typed() { return Find<QLineEdit>("txtDir")->text(); }
    void Type(const std::string& text) { Find<QLineEdit>("txtDir")->setText(QString::fromStdString(text)); }
    QString Listed() { return Find<QAbstractItemView>("dirListBox")->property("path").toString(); }
    bool CanApply() { return Find<QPushButton>("cmdApply")->isEnabled(); }
    bool WaitUntilClosed() {
        return WaitFor([&] { return !chooser.isVisible(); });
    }

    test::TestHost host;
    test::TestServices test;
    QAction item;
    std::string gameDirectory = test.MakeFolder("Games/Tempest II");
    std::string other = test.MakeFolder("Games/Other Copy");
    frmChangeT2Dir chooser{host, &item, test.services, gameDirectory};
};

TEST_F(Chooser, ShowsTheCurrentDirectoryAtEveryOpening) {
    chooser.Open();
    EXPECT_TRUE(item.isChecked());
    EXPECT_TRUE(Find<QLabel>("lblChangeT2Info")->text().endsWith("PS: It is case sensative."));
    EXPECT_EQ(Native(Find<QLabel>("lblCurrent")->text().toStdString()), Native(gameDirectory));
    EXPECT_EQ(Listed(), Native(gameDirectory));
    EXPECT_EQ(Typed(), Native(gameDirectory));

    Type("something else");
    Click("cmdCancel");
    ASSERT_TRUE(WaitUntilClosed());
    EXPECT_FALSE(item.isChecked());
    chooser.Open();
    EXPECT_EQ(Typed(), Native(gameDirectory)) << "though the list stands where it stood";

    Click("cmdCancel");
    ASSERT_TRUE(WaitUntilClosed());
    gameDirectory = test.MakeFolder("Games") + "/gone";
    chooser.Open();
    EXPECT_EQ(Typed(), Native(test.ProgramDirectory()));
}

TEST_F(Chooser, ApplyStoresAndStaysAndOkStoresAndCloses) {
    chooser.Open();
    Find<QAbstractItemView>("dirListBox")->setProperty("path", QString::fromStdString(other));
    EXPECT_EQ(Typed(), Native(other));
    EXPECT_TRUE(CanApply());
    Type(other + "/");
    QTest::keyClick(Find<QPushButton>("cmdApply"), Qt::Key_Return);
    EXPECT_EQ(gameDirectory, other);
    EXPECT_EQ(Native(Find<QLabel>("lblCurrent")->text().toStdString()), Native(other));
    EXPECT_FALSE(CanApply());
    EXPECT_TRUE(chooser.isVisible());

    const std::string third = test.MakeFolder("Games/Third");
    Type(third);
    EXPECT_TRUE(CanApply());
    QTest::keyClick(Find<QLineEdit>("txtDir"), Qt::Key_Return);
    EXPECT_TRUE(WaitUntilClosed());
    EXPECT_EQ(gameDirectory, third);
}

TEST_F(Chooser, RefusesWhatIsNoOtherFolderInExactSpelling) {
    const std::string before = gameDirectory;
    QFile file(QString::fromStdString(test.MakeFolder("Games") + "/Tempest2.exe"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    chooser.Open();
    for (const std::string& bad : {test.MakeFolder("Games") + "/tempest ii", file.fileName().toStdString(),
                                   before, test.MakeFolder("Games") + "/missing"}) {
        Type(bad);
        Click("cmdApply");
        EXPECT_EQ(gameDirectory, before) << bad;
    }
    Type("no folder at all");
    Click("cmdOK");
    EXPECT_TRUE(chooser.isVisible());
    Type(test.MakeFolder("Games") + "/missing");
    Click("cmdOK");
    EXPECT_TRUE(WaitUntilClosed());
    EXPECT_EQ(gameDirectory, before);
}

TEST_F(Chooser, WithoutAGameItIsModalAndCancelAsksForTheEndOfTheProgram) {
    qputenv("WINEPREFIX", QByteArray::fromStdString(test.MakeFolder("prefix")));
    test.MakeFolder("prefix/drive_c");
    gameDirectory = kGameNotFound;
    chooser.Open();
    EXPECT_EQ(Typed(), "Unable to find directory. Please locate manually/install Tempest II.");
    EXPECT_TRUE(chooser.isVisible());
    EXPECT_TRUE(chooser.isModal());

    QSignalSpy quit(&chooser, &frmChangeT2Dir::QuitRequested);
    QTest::keyClick(&chooser, Qt::Key_Escape);
    EXPECT_EQ(quit.count(), 1);
    EXPECT_TRUE(chooser.isVisible());
    chooser.close();
    ASSERT_TRUE(WaitUntilClosed()) << "its close box closes it";
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(Chooser, OpenModalReturnsWhenTheGameThatItFoundIsConfirmed) {
    qputenv("WINEPREFIX", QByteArray::fromStdString(test.MakeFolder("prefix")));
    const std::string game = test.MakeFolder("prefix/drive_c/Games/T2");
    QFile executable(QString::fromStdString(game) + "/TEMPEST2.EXE");
    ASSERT_TRUE(executable.open(QIODevice::WriteOnly));
    gameDirectory = kGameNotFound;

    bool confirmed = false;
    QTimer confirm;
    QObject::connect(&confirm, &QTimer::timeout, [&] {
        if (Typed() != Native(game)) return;
        confirm.stop();
        EXPECT_TRUE(chooser.isModal());
        EXPECT_TRUE(CanApply());
        EXPECT_EQ(gameDirectory, kGameNotFound) << "only a confirmation stores it";
        Click("cmdOK");
        confirmed = true;
    });
    confirm.start(0);
    chooser.OpenModal();
    EXPECT_TRUE(confirmed);
    EXPECT_FALSE(chooser.isVisible());
    EXPECT_EQ(QDir::fromNativeSeparators(QString::fromStdString(gameDirectory)).toStdString(), game);

    chooser.Open();
    EXPECT_FALSE(chooser.isModal());
}

TEST_F(Chooser, TheFolderListGoesIntoFoldersAndRefusesWhatIsNone) {
    chooser.Open();
    auto* list = Find<FolderListBox>("dirListBox");
    list->setPath(QString::fromStdString(test.MakeFolder("Games")));
    QTreeWidgetItem* current = list->currentItem();
    ASSERT_EQ(current->childCount(), 2);
    EXPECT_EQ(current->child(0)->text(0), "Other Copy");
    list->setCurrentItem(current->child(0));
    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([&] { return Typed() == Native(other); }));

    for (const QString& bad : {QString("relative"), QString(), QString::fromStdString(other + "/none")}) {
        list->setPath(bad);
        EXPECT_EQ(Listed(), Native(other));
    }
    list->setPath(QString::fromStdString(other).replace('/', '\\') + "\\..\\");
    EXPECT_EQ(Listed(), Native(test.MakeFolder("Games")));
}

} // namespace
} // namespace quillbay
