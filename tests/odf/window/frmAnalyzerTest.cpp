#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

class Analyzer : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        SelectorFixture::Open("menuModAnalyzeMod", "frmAnalyzer");
        tree = &In<QTreeWidget>("TreeViewer");
        list = &In<QListWidget>("lstFiles");
        picture = &In<QLabel>("picImages");
    }
    /// The texts below the root, joined by slashes.
    static QString PathOf(const QTreeWidgetItem& node) {
        const auto* parent = node.parent();
        return (parent && parent->parent() ? PathOf(*parent) + '/' : QString()) + node.text(0);
    }
    QTreeWidgetItem* Node(const QString& path) const {
        for (QTreeWidgetItemIterator node(tree); *node; ++node)
            if (PathOf(**node) == path) return *node;
        return nullptr;
    }
    void ClickNode(const QString& path) const {
        tree->setCurrentItem(Node(path));
        EXPECT_EQ(list->height(), tree->height());
    }
    /// The rows, sorted; the selected one with a star.
    QStringList Files() const {
        QStringList names;
        for (int row = 0; row < list->count(); ++row)
            names += list->item(row)->text() + (list->item(row)->isSelected() ? " *" : "");
        names.sort();
        return names;
    }
    /// Below the rows when there is no such file.
    void ClickFile(const QString& name, Qt::MouseButton button = Qt::LeftButton) const {
        const auto found = list->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
        const QPoint outside(5, list->viewport()->height() - 2);
        QTest::mouseClick(list->viewport(), button, {},
                          found.isEmpty() ? outside : list->visualItemRect(found.front()).center());
    }
    void Press(char key) const { QTest::keyClick(list, key, Qt::ControlModifier); }
    QAction& Command(const char* name) const { return In<QAction>(name); }
    /// The items of the menu of the files, disabled ones with a minus; closes it.
    QString Menu() const {
        auto& menu = In<QMenu>("menuLstFilesRight");
        if (!menu.isVisible()) return "(closed)";
        menu.close();
        QStringList items;
        for (const QAction* action : menu.actions())
            if (action->isVisible()) items += action->text() + (action->isEnabled() ? "" : "-");
        return items.join(' ');
    }
    /// To a place that is seen from where the picture was before.
    void Drag(QPoint from, QPoint to) const {
        const QPoint moved = picture->mapToParent(to);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
            const bool isUp = type == QEvent::MouseButtonRelease;
            const QPoint at = type == QEvent::MouseButtonPress ? from : picture->mapFromParent(moved);
            QMouseEvent event(type, at, picture->mapToGlobal(at), Qt::LeftButton,
                              isUp ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(picture, &event);
        }
    }

    QTreeWidget* tree = nullptr;
    QListWidget* list = nullptr;
    QLabel* picture = nullptr;
};

TEST_F(Analyzer, TheTreeFollowsTheMainList) {
    Write("program/mods/Alpha/odf/alpha.odf", "");
    MakeFolder("program/mods/Alpha/odf/ships");
    Write("program/mods/Beta/odf/ships/beta.odf", "");
    Open();
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
    const QTreeWidgetItem* node = Node("Alpha/logs");
    EXPECT_TRUE(node) << "also when the mods are the same";
    Control<QPushButton>("cmdRefresh").click();
    EXPECT_EQ(Node("Alpha/logs"), node) << "nothing has changed";
    EXPECT_EQ(tree->selectedItems(), QList{Node("Beta/odf/ships")});
    EXPECT_EQ(Files(), QStringList{"beta.odf *"});

    Item("menuModAnalyzeMod").trigger();
    EXPECT_EQ(Files(), QStringList{});
    EXPECT_TRUE(tree->selectedItems().isEmpty());
    ClickNode("Beta");
    EXPECT_EQ(Files(), QStringList{"(No files found.)"});
    QDir(Path("program/mods/Beta")).removeRecursively();
    Tick();
    EXPECT_TRUE(!Node("Beta") && Files().isEmpty() && tree->selectedItems().isEmpty());
    emit tree->itemDoubleClicked(Node("Mods"), 0);
    ASSERT_EQ(shell.opened.size(), 1U) << "the folder that was clicked last";
    EXPECT_TRUE(shell.opened[0].target.ends_with("Beta"));
}

TEST_F(Analyzer, ShowsStatisticsBelowAShorterList) {
    for (const char* name : {"ships/a.odf", "ships/b.ODF", "ships/c.txt", "loose.odf"})
        Write(QStringLiteral("program/mods/Alpha/odf/") + name, "race = \"x & <b>\" // raw\r\n");
    Open();
    EXPECT_EQ(Caption("lblOdfBuildTime"), "BuildTime =");
    ClickNode("Alpha/odf/ships");
    for (const char* name : {"a.odf", "b.ODF", "c.txt"}) {
        ClickFile(name);
        EXPECT_EQ(Caption("lblOdfRace"), *name == 'a' ? "race = \"x & <b>\" // raw" : "") << name;
        EXPECT_EQ(Caption("lblOdfMaxHealth"),
                  *name == 'a' ? "maxHealth = (File does not contain 'maxHealth')" : "");
        EXPECT_EQ(list->height(), 173) << name;
        EXPECT_TRUE(In<QLabel>("lblOdfShieldRate").isVisible()) << name;
    }
    ClickNode("Alpha/odf");
    ClickFile("loose.odf");
    EXPECT_EQ(Caption("lblOdfRace"), "") << "no unit";
    opened->close();
    ASSERT_TRUE(WaitUntilClosed());
    Item("menuModAnalyzeMod").trigger();
    EXPECT_EQ(Caption("lblOdfBuildTime"), "BuildTime =");
}

TEST_F(Analyzer, CopiesPastesRemovesAndOpensTheSelectedRow) {
    Write("program/mods/Alpha/sound.wav", "s");
    Write("program/mods/Alpha/Sound.wav", "S");
    MakeFolder("program/mods/Beta");
    AnswerBoxes boxes;
    Open();
    ClickNode("Alpha");
    ClickFile("below the rows", Qt::RightButton);
    EXPECT_EQ(Menu(), "(closed)");
    ClickFile("Sound.wav", Qt::RightButton);
    EXPECT_EQ(Menu(), "&Open &Remove &Copy &Paste-");
    Command("menuLstFilesRightOpen").trigger();
    ClickFile("sound.wav");
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                       list->visualItemRect(list->selectedItems().front()).center());
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(sound.played.size(), 2U);
    EXPECT_EQ(shell.opened.size(), 1U);

    QApplication::clipboard()->setText("mine");
    Press('V');
    Press('C');
    EXPECT_EQ(QApplication::clipboard()->text(), "mine");
    Press('V');
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].text + '|' + boxes.Seen()[0].title, "File already exists.|File exists");
    EXPECT_EQ(boxes.Seen()[0].icon, QMessageBox::Warning);
    EXPECT_EQ(Files(), (QStringList{"Sound.wav", "sound.wav *"}));

    ClickNode("Beta");
    ClickFile("(No files found.)", Qt::RightButton);
    EXPECT_EQ(Menu(), "&Open- &Remove- &Copy- &Paste");
    Press('D');
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(shell.opened.size(), 1U);
    ClickFile("below the rows", Qt::RightButton);
    EXPECT_EQ(Menu(), "&Paste");
    Command("menuLstFilesRightPaste").trigger();
    EXPECT_EQ(Files(), QStringList{"sound.wav"});
    EXPECT_EQ(Read("program/mods/Beta/sound.wav"), "s");

    ClickNode("Alpha");
    ClickFile("sound.wav");
    ClickFile("below the rows");
    EXPECT_FALSE(list->currentItem());
    Press('D');
    EXPECT_TRUE(Exists("program/mods/Alpha/sound.wav")) << "no row was selected";
    ClickFile("sound.wav");
    Press('D');
    EXPECT_EQ(Files(), QStringList{"Sound.wav *"});
    ClickFile("Sound.wav", Qt::RightButton);
    EXPECT_EQ(Menu(), "&Open &Remove &Copy &Paste-") << "only the other spelling is there";
    Press('V');
    EXPECT_EQ(boxes.Seen().size(), 1U);

    ClickFile("Sound.wav");
    Press('C');
    ClickNode("Beta");
    Item("menuModAnalyzeMod").trigger();
    Press('V');
    EXPECT_FALSE(Exists("program/mods/Beta/Sound.wav")) << "no folder is shown";
}

TEST_F(Analyzer, ADragMovesThePictureAndAClickSwitchesTheMode) {
    MakeFolder("program/mods/Alpha");
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(0);
    image.save(Path("program/mods/Alpha/a.bmp"));
    image.save(Path("program/mods/Alpha/b.JPG"));
    const QString hugeFile = "program/mods/Alpha/huge.gif";
    QImage(6000, 6000, QImage::Format_Mono).save(Path(hugeFile), "bmp"); // more than is shown
    Open();
    ClickNode("Alpha");
    EXPECT_TRUE(picture->isHidden());
    for (const char* name : {"huge.gif", "b.JPG", "a.bmp"}) {
        ClickFile(name);
        EXPECT_EQ(picture->isHidden(), *name == 'h') << name;
        EXPECT_EQ(In<QLabel>("lblInvalidPic").isVisible(), *name == 'h') << name;
        EXPECT_EQ(list->height(), 173) << name;
    }
    const QRect box(288, 200, 277, 161);
    const QPoint corner(8512 / 15, 5482 / 15);
    Command("menuPicRightCopy").trigger();
    EXPECT_EQ(QApplication::clipboard()->pixmap().size(), QSize(300, 200));
    Drag({10, 10}, {50, 40});
    EXPECT_EQ(picture->toolTip(), "300 x 200 pixels");
    EXPECT_EQ(picture->geometry(), box) << "nothing happens in the normal mode";
    EXPECT_TRUE(tree->isVisible());

    const auto click = [&] { QTest::mouseClick(picture, Qt::LeftButton, {}, {5, 5}); };
    /// What differs between the modes, but for the focus.
    const auto expectFull = [&](bool full) {
        EXPECT_EQ(tree->isHidden() && list->isHidden(), full);
        EXPECT_EQ(tree->isHidden() || list->isHidden(), full);
        EXPECT_EQ(In<QLabel>("lblOdfRace").toolTip(), full ? "" : "Race unit is in");
        EXPECT_EQ(Command("menuPicRightFullWindow").text(), full ? "Normal &window" : "Full &window");
        EXPECT_EQ(Command("menuPicRightCenter").isEnabled(), full);
    };
    click();
    const QRect centred((opened->width() - 300) / 2, (opened->height() - 200) / 2, 300, 200);
    EXPECT_EQ(picture->geometry(), centred);
    expectFull(true);
    Drag({10, 10}, {50, 40});
    EXPECT_EQ(picture->geometry(), centred.translated(40, 30));
    Drag({10, 10}, {2000, 2000});
    EXPECT_EQ(picture->pos(), corner);
    Drag({10, 10}, {-2000, 0});
    EXPECT_EQ(picture->pos(), corner - QPoint(0, 10)) << "it would leave the window";
    Command("menuPicRightCenter").trigger();
    EXPECT_EQ(picture->geometry(), centred);
    click();
    expectFull(false);
    EXPECT_EQ(opened->focusWidget(), list);
    EXPECT_EQ(picture->geometry(), box);

    click();
    Item("menuModAnalyzeMod").trigger();
    expectFull(false);
    EXPECT_TRUE(picture->isHidden());
    ClickNode("Alpha");
    ClickFile("a.bmp");
    click();
    opened->close();
    ASSERT_TRUE(WaitFor([&] { return !Item("menuModAnalyzeMod").isChecked(); }));
    expectFull(false);
}

} // namespace
} // namespace quillbay::test
