#include "help/ReadmeTopics.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay {
namespace {

class HelpWindow : public test::SelectorFixture {
protected:
    void SetUp() override { ASSERT_TRUE(Start()); }
};

TEST_F(HelpWindow, ReadmeShowsTheChosenTopicAndTheAddressWithTheLast) {
    Open("menuHelpViewReadme", "frmReadme");
    auto& list = In<QListWidget>("lstChoices");
    const auto& text = In<QLabel>("lblDisplay");
    auto& address = In<QLabel>("lblEmail");
    EXPECT_TRUE(Item("menuHelpViewReadme").isChecked());
    EXPECT_EQ(list.currentItem()->text(), "Introduction");
    EXPECT_TRUE(text.text().startsWith("Quillbay (T2QB")) << qPrintable(text.text());
    EXPECT_FALSE(address.isVisible());

    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_TRUE(text.text().startsWith("If something does not work"));
    ASSERT_TRUE(address.isVisible());
    EXPECT_EQ(address.cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(&address, Qt::LeftButton);
    QTest::keyClick(&address, Qt::Key_Return);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&address, &held);
    address.setSelection(0, 3);
    QTest::mouseRelease(&address, Qt::LeftButton); // the end of selecting with the mouse
    ASSERT_EQ(shell.opened.size(), 2U);
    for (const auto& asked : shell.opened) {
        EXPECT_EQ(asked.target, "mailto:" + std::string(kContactAddress));
        EXPECT_EQ(asked.workingFolder, "C:\\");
    }

    list.setCurrentItem(list.findItems("Addons", Qt::MatchContains).front());
    EXPECT_FALSE(address.isVisible());
    EXPECT_TRUE(text.text().contains(Path("program") + "\\mods\\"));

    opened->close();
    ASSERT_TRUE(test::WaitFor([&] { return !Item("menuHelpViewReadme").isChecked(); }));
    OpenWindow("menuHelpViewReadme", "frmReadme");
    EXPECT_EQ(list.currentRow(), 0);
}

TEST_F(HelpWindow, EveryTopicOfTheReadmeIsPlainText) {
    Open("menuHelpViewReadme", "frmReadme");
    auto& list = In<QListWidget>("lstChoices");
    EXPECT_GT(list.count(), 40);
    opened->resize(300, 100);
    auto& bar = *In<QScrollArea>("areaDisplay").verticalScrollBar();
    QApplication::processEvents();
    bar.setValue(bar.maximum());
    ASSERT_GT(bar.value(), 0);
    list.setCurrentRow(1);
    EXPECT_EQ(bar.value(), 0);
    for (int row = 0; row < list.count(); ++row) {
        list.setCurrentRow(row);
        EXPECT_TRUE(Caption("lblDisplay").contains(QRegularExpression("^[^{}~\r\t]+$"))) << row;
    }
}

} // namespace
} // namespace quillbay
