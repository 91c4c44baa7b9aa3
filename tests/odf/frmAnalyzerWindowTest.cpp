#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

namespace quillbay::test {
namespace {

QByteArray Picture(QSize size, const char* format, QImage::Format pixels = QImage::Format_RGB32) {
    QImage image(size, pixels);
    image.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

class Analyzer : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        opened = &OpenWindow("menuModAnalyzeMod", "frmAnalyzer");
        tree = &Control<QTreeWidget>(*opened, "TreeViewer");
        list = &Control<QListWidget>(*opened, "lstFiles");
        picture = &Control<QLabel>(*opened, "picImages");
    }
    QTreeWidgetItem* Node(const QString& path) const {
        QTreeWidgetItem* node = tree->topLevelItem(0);
        for (const QString& text : path.split('/', Qt::SkipEmptyParts)) {
            QTreeWidgetItem* found = nullptr;
            for (int i = 0; node && i < node->childCount(); ++i)
                if (node->child(i)->text(0) == text) found = node->child(i);
            node = found;
        }
        return node;
    }
    void ClickNode(const QString& path) const {
        tree->setCurrentItem(Node(path));
        EXPECT_EQ(list->height(), tree->height());
    }
    QStringList Files() const {
        QStringList names;
        for (int row = 0; row < list->count(); ++row)
            names += list->item(row)->text() + (list->item(row)->isSelected() ? " *" : "");
        names.sort();
        return names;
    }
    void ClickFile(const QString& name, Qt::MouseButton button = Qt::LeftButton) const {
        const auto found = list->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
        const QPoint outside(5, list->viewport()->height() - 2);
        QTest::mouseClick(list->viewport(), button, {},
                          found.isEmpty() ? outside : list->visualItemRect(found.front()).center());
    }
    QString Text(const char* label) const { return Control<QLabel>(*opened, label).text(); }
    QAction& Command(const char* name) const { return Control<QAction>(*opened, name); }
    /// The popup menu's items that can be chosen, in their order; closes the menu.
    QStringList Menu(const char* name) const {
        auto& menu = Control<QMenu>(*opened, name);
        if (!menu.isVisible()) return {"(closed)"};
        menu.close();
        QStringList items;
        for (const QAction* action : menu.actions())
            if (action->isVisible()) items += action->text() + (action->isEnabled() ? "" : " -");
        return items;
    }
    void Mouse(QEvent::Type type, QPoint at) const {
        QMouseEvent event(type, at, picture->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(picture, &event);
    }
    void Drag(QPoint from, QPoint to) const {
        Mouse(QEvent::MouseButtonPress, from);
        const QPoint moved = picture->mapToParent(to);
        Mouse(QEvent::MouseMove, to);
        Mouse(QEvent::MouseButtonRelease, picture->mapFromParent(moved));
    }

    QWidget* opened = nullptr;
    QTreeWidget* tree = nullptr;
    QListWidget* list = nullptr;
    QLabel* picture = nullptr;
};

TEST_F(Analyzer, TheTreeFollowsTheMainList) {
    Write("program/mods/Alpha/odf/alpha.odf", "");
    MakeFolder("program/mods/Alpha/odf/ships");
    Write("program/mods/Beta/odf/ships/beta.odf", "");
    Open();
    EXPECT_TRUE(Item("menuModAnalyzeMod").isChecked());
    Node("Beta/odf")->setExpanded(true);
    ClickNode("Alpha/odf");
    EXPECT_EQ(Files(), QStringList{"alpha.odf"});
    ClickNode("Beta/odf/ships");
    ClickFile("beta.odf");
    MakeFolder("program/mods/Aardvark");
    Tick();
    EXPECT_TRUE(Node("Aardvark") && Node("Beta/odf")->isExpanded() && !Node("Alpha/odf")->isExpanded());
    MakeFolder("program/mods/Alpha/Logs");
    Control<QPushButton>("cmdRefresh").click();
    EXPECT_TRUE(Node("Alpha/logs")) << "also when the mods are the same";
    EXPECT_EQ(tree->selectedItems(), QList{Node("Beta/odf/ships")});
    EXPECT_EQ(Files(), QStringList{"beta.odf *"});

    Item("menuModAnalyzeMod").trigger();
    EXPECT_EQ(Files(), QStringList{});
    ClickNode("Beta");
    EXPECT_EQ(Files(), QStringList{"(No files found.)"});
    QDir(Path("program/mods/Beta")).removeRecursively();
    Tick();
    EXPECT_TRUE(!Node("Beta") && Files().isEmpty() && tree->selectedItems().isEmpty());
    emit tree->itemDoubleClicked(Node({}), 0);
    ASSERT_EQ(shell.opened.size(), 1U) << "the folder that was clicked last";
    EXPECT_TRUE(shell.opened[0].target.ends_with("Beta"));
}

TEST_F(Analyzer, ShowsStatisticsBelowAShorterList) {
    for (const char* name : {"a.odf", "b.ODF", "c.txt"})
        Write(QString("program/mods/Alpha/odf/ships/%1").arg(name), "race = \"x & <b>\" // raw\r\n");
    Write("program/mods/Alpha/loose.odf", "race = 1");
    Open();
    EXPECT_EQ(Text("lblOdfBuildTime"), "BuildTime =");
    ClickNode("Alpha/odf/ships");
    ClickFile("a.odf");
    EXPECT_EQ(Text("lblOdfRace"), "race = \"x & <b>\" // raw");
    EXPECT_EQ(Text("lblOdfMaxHealth"), "maxHealth = (File does not contain 'maxHealth')");
    EXPECT_EQ(list->height(), 173);
    EXPECT_TRUE(Control<QLabel>(*opened, "lblOdfShieldRate").isVisible());
    for (const char* name : {"b.ODF", "c.txt"}) {
        ClickFile(name);
        EXPECT_EQ(Text("lblOdfRace"), "") << name;
        EXPECT_EQ(list->height(), 173) << name;
    }
    ClickNode("Alpha");
    ClickFile("loose.odf");
    EXPECT_EQ(Text("lblOdfRace"), "");
}

TEST_F(Analyzer, CopiesPastesRemovesAndOpensTheSelectedRow) {
    Write("program/mods/Alpha/sound.wav", "s");
    Write("program/mods/Alpha/Sound.wav", "S");
    MakeFolder("program/mods/Beta");
    Open();
    ClickNode("Alpha");
    ClickFile("below the rows", Qt::RightButton);
    EXPECT_EQ(Menu("menuLstFilesRight"), QStringList{"(closed)"});
    ClickFile("Sound.wav", Qt::RightButton);
    EXPECT_EQ(Menu("menuLstFilesRight"), (QStringList{"&Open", "&Remove", "&Copy", "&Paste -"}));
    Command("menuLstFilesRightOpen").trigger();
    ClickFile("sound.wav");
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                       list->visualItemRect(list->selectedItems().front()).center());
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(sound.played.size(), 2U);
    EXPECT_EQ(shell.opened.size(), 1U);

    QApplication::clipboard()->setText("mine");
    QTest::keyClick(list, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "mine");
    AnswerBoxes boxes;
    QTest::keyClick(list, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].text + '|' + boxes.Seen()[0].title, "File already exists.|File exists");
    EXPECT_EQ(boxes.Seen()[0].icon, QMessageBox::Warning);
    EXPECT_EQ(Files(), (QStringList{"Sound.wav", "sound.wav *"}));

    ClickNode("Beta");
    ClickFile("(No files found.)", Qt::RightButton);
    EXPECT_EQ(Menu("menuLstFilesRight"), (QStringList{"&Open -", "&Remove -", "&Copy -", "&Paste"}));
    QTest::keyClick(list, Qt::Key_D, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(shell.opened.size(), 1U);
    ClickFile("below the rows", Qt::RightButton);
    EXPECT_EQ(Menu("menuLstFilesRight"), QStringList{"&Paste"});
    Command("menuLstFilesRightPaste").trigger();
    EXPECT_EQ(Files(), QStringList{"sound.wav"});
    EXPECT_EQ(Read("program/mods/Beta/sound.wav"), "s");

    ClickNode("Alpha");
    ClickFile("sound.wav");
    ClickFile("below the rows");
    EXPECT_FALSE(list->currentItem());
    QTest::keyClick(list, Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(Exists("program/mods/Alpha/sound.wav")) << "no row was selected";
    ClickFile("sound.wav");
    QTest::keyClick(list, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(Files(), QStringList{"Sound.wav"});
    ClickFile("Sound.wav", Qt::RightButton);
    EXPECT_EQ(Menu("menuLstFilesRight").back(), "&Paste -") << "only the other spelling is there";
    QTest::keyClick(list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(boxes.Seen().size(), 1U);
}

TEST_F(Analyzer, ADragMovesThePictureAndAClickSwitchesTheMode) {
    Write("program/mods/Alpha/a.bmp", Picture({300, 200}, "bmp"));
    Write("program/mods/Alpha/b.JPG", Picture({40, 30}, "jpg"));
    QByteArray huge = Picture({32, 1}, "bmp", QImage::Format_Mono);
    for (const int at : {18, 22}) // width and height
        huge.replace(at, 4, QByteArray("\x30\x75\0\0", 4));
    Write("program/mods/Alpha/huge.gif", huge);
    Open();
    ClickNode("Alpha");
    EXPECT_TRUE(picture->isHidden());
    ClickFile("huge.gif");
    EXPECT_TRUE(picture->isHidden());
    EXPECT_TRUE(Control<QLabel>(*opened, "lblInvalidPic").isVisible());
    ClickFile("b.JPG");
    ClickFile("a.bmp");
    EXPECT_FALSE(Control<QLabel>(*opened, "lblInvalidPic").isVisible());
    EXPECT_EQ(list->height(), 173);
    const QRect box(288, 200, 277, 161);
    EXPECT_EQ(picture->geometry(), box);
    Command("menuPicRightCopy").trigger();
    EXPECT_EQ(QApplication::clipboard()->pixmap().size(), QSize(300, 200));

    Drag({10, 10}, {50, 40});
    EXPECT_EQ(picture->geometry(), box) << "nothing happens in the normal mode";
    EXPECT_TRUE(tree->isVisible());
    const auto click = [&] { QTest::mouseClick(picture, Qt::LeftButton, {}, {5, 5}); };
    click();
    const QRect centred((opened->width() - 300) / 2, (opened->height() - 200) / 2, 300, 200);
    EXPECT_EQ(picture->geometry(), centred);
    EXPECT_TRUE(tree->isHidden() && list->isHidden());
    EXPECT_EQ(Control<QLabel>(*opened, "lblOdfRace").toolTip(), "");
    EXPECT_EQ(Command("menuPicRightFullWindow").text(), "Normal &window");

    Drag({10, 10}, {50, 40});
    EXPECT_EQ(picture->geometry(), centred.translated(40, 30));
    Drag({10, 10}, {2000, 2000});
    EXPECT_EQ(picture->pos(), QPoint(8512 / 15, 5482 / 15));
    Drag({10, 10}, {-2000, 0});
    EXPECT_EQ(picture->pos(), QPoint(8512 / 15, 5482 / 15 - 10)) << "it would leave the window";
    Command("menuPicRightCenter").trigger();
    EXPECT_EQ(picture->geometry(), centred);
    click();
    EXPECT_TRUE(tree->isVisible());
    EXPECT_EQ(opened->focusWidget(), list);
    EXPECT_EQ(picture->geometry(), box);

    click();
    Item("menuModAnalyzeMod").trigger();
    EXPECT_TRUE(tree->isVisible() && list->isVisible() && picture->isHidden());
    ClickNode("Alpha");
    ClickFile("a.bmp");
    click();
    opened->close();
    ASSERT_TRUE(WaitFor([&] { return !Item("menuModAnalyzeMod").isChecked(); }));
    EXPECT_FALSE(tree->isHidden() || list->isHidden() || Command("menuPicRightCenter").isEnabled());
    EXPECT_EQ(Control<QLabel>(*opened, "lblOdfRace").toolTip(), "Race unit is in");
    EXPECT_EQ(Command("menuPicRightFullWindow").text(), "Full &window");
}

} // namespace
} // namespace quillbay::test
