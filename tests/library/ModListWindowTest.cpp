#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QtTest>

namespace quillbay::test {
namespace {

class ModList : public SelectorFixture {};

/// Counts what would make the user see a flicker.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

TEST_F(ModList, RebuildKeepsTheSelectionByPathAndFollowsTheDisk) {
    MakeFolder("program/mods/Bravo/Addon/Maps");
    MakeFolder("program/mods/alpha/Addon/Maps");
    Write("program/mods/loose.txt", "no row");
    ASSERT_TRUE(Start());
    EXPECT_EQ(Rows(), (QStringList{"alpha", "    Maps", "Bravo", "    Maps"}));
    EXPECT_EQ(SelectedText(), "alpha");

    Mods().setCurrentRow(3);
    MakeFolder("program/mods/aardvark");
    Tick();
    EXPECT_EQ(Rows(), (QStringList{"aardvark", "alpha", "    Maps", "Bravo", "    Maps"}));
    EXPECT_EQ(Mods().row(Mods().selectedItems().value(0)), 4) << "the addon of Bravo, not that of alpha";

    QDir().rename(Path("program/mods/Bravo"), Path("program/mods/Charlie"));
    Tick();
    EXPECT_EQ(SelectedText(), "aardvark");
    QDir(Path("program/mods")).removeRecursively();
    Tick();
    EXPECT_TRUE(Exists("program/mods"));
    EXPECT_EQ(Rows(), QStringList("(No mods found.)"));
    EXPECT_EQ(Control<QLabel>("lblModsMaker").text(), "(No mod selected)");
}

TEST_F(ModList, NothingChangedMeansNothingRepainted) {
    for (int mod = 10; mod < 70; ++mod)
        MakeFolder(QStringLiteral("program/mods/Mod %1").arg(mod));
    ASSERT_TRUE(Start());
    Mods().setCurrentRow(5);
    Mods().verticalScrollBar()->setValue(20);
    QCoreApplication::processEvents();
    const int details = files.treeSizes;
    PaintCounter counter(*Mods().viewport());
    Tick();
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    EXPECT_EQ(files.treeSizes, details);

    Control<QPushButton>("cmdRefresh").click();
    EXPECT_EQ(files.treeSizes, details + 1) << "details once for each action of the user";
    MakeFolder("program/mods/Zulu");
    Tick();
    EXPECT_EQ(Mods().count(), 61);
    EXPECT_EQ(Mods().verticalScrollBar()->value(), 20);
    EXPECT_EQ(SelectedText(), "Mod 15");
    EXPECT_EQ(Control<QPushButton>("cmdRefresh").text(), "&Refresh Mod List");
    EXPECT_TRUE(Mods().isEnabled());
}

TEST_F(ModList, AnEmptyLibraryIsNotRebuiltEverySecond) {
    ASSERT_TRUE(Start());
    const QListWidgetItem* placeholder = Mods().item(0);
    QSignalSpy rebuilt(Mods().model(), &QAbstractItemModel::rowsInserted);
    Tick();
    EXPECT_TRUE(rebuilt.isEmpty());
    EXPECT_EQ(Mods().item(0), placeholder);
    EXPECT_TRUE(Mods().selectedItems().isEmpty());

    AnswerBoxes boxes;
    Mods().setCurrentRow(0);
    Item("menuModInstall").trigger();
    Item("menuModUninstall").trigger();
    ASSERT_EQ(boxes.Seen().size(), 2u);
    EXPECT_EQ(boxes.Seen()[0].title, "Install mod first");
    EXPECT_EQ(boxes.Seen()[1].icon, QMessageBox::Warning);
}

TEST_F(ModList, TwentyFourRowsFillTheListAndTheMouseActsOnTheOneBelowIt) {
    for (int mod = 10; mod < 70; ++mod)
        MakeFolder(QStringLiteral("program/mods/Mod %1").arg(mod));
    ASSERT_TRUE(Start());
    QListWidget& list = Mods();
    EXPECT_EQ(list.viewport()->height(), 24 * list.visualItemRect(list.item(0)).height());
    list.verticalScrollBar()->setValue(7);
    EXPECT_EQ(list.indexAt(QPoint(5, list.viewport()->height() - 1)).row(), 30);

    auto& menu = Control<QMenu>("menuModCurrentMod");
    QTest::mouseClick(list.viewport(), Qt::RightButton, {},
                      QPoint(5, list.visualItemRect(list.item(9)).center().y()));
    EXPECT_EQ(SelectedText(), "Mod 19");
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(menu.defaultAction(), &Item("menuModInstall"));
    menu.hide();

    AnswerBoxes boxes;
    const QPoint row = list.visualItemRect(list.item(9)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, row);
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Backspace);
    QTest::keyClick(&list, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_Backspace, Qt::AltModifier);
    QTest::mouseClick(list.viewport(), Qt::MiddleButton, {}, row);
    QTest::mouseDClick(list.viewport(), Qt::MiddleButton, {}, row);
    list.clearSelection();
    QTest::keyClick(&list, Qt::Key_Return);
    ASSERT_EQ(boxes.Seen().size(), 4u);
    EXPECT_EQ(boxes.Seen()[0].title, "Install Mod 19 mod?");
    EXPECT_EQ(boxes.Seen()[1].title, "Install Mod 19 mod?");
    EXPECT_EQ(boxes.Seen()[2].title, "Uninstall Mod 19 mod?");
    EXPECT_EQ(boxes.Seen()[3].title, "Select a mod") << "no row is selected, although one is current";
}

} // namespace
} // namespace quillbay::test
