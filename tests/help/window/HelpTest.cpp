#include "common/Version.h"
#include "common/window/QtText.h"
#include "help/ReadmeTopics.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace quillbay {
namespace {

class HelpWindow : public test::SelectorFixture {
protected:
    void SetUp() override { ASSERT_TRUE(Start()); }
};

TEST_F(HelpWindow, ReadmeShowsTheChosenTopicAndTheAddressWithTheLast) {
    QWidget& readme = OpenWindow("menuHelpViewReadme", "frmReadme");
    auto& list = Control<QListWidget>(readme, "lstChoices");
    const auto& text = Control<QLabel>(readme, "lblDisplay");
    auto& address = Control<QLabel>(readme, "lblEmail");
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
    for (const auto& opened : shell.opened) {
        EXPECT_EQ(opened.target, "mailto:" + std::string(kContactAddress));
        EXPECT_EQ(opened.workingFolder, "C:\\");
    }

    list.setCurrentItem(list.findItems("Addons", Qt::MatchContains).front());
    EXPECT_FALSE(address.isVisible());
    EXPECT_TRUE(text.text().contains(Path("program") + "\\mods\\"));

    readme.close();
    ASSERT_TRUE(test::WaitFor([&] { return !Item("menuHelpViewReadme").isChecked(); }));
    OpenWindow("menuHelpViewReadme", "frmReadme");
    EXPECT_EQ(list.currentRow(), 0);
}

TEST_F(HelpWindow, ReadmeHasItsTopicsInTheirOrderAndLevels) {
    QWidget& readme = OpenWindow("menuHelpViewReadme", "frmReadme");
    auto& list = Control<QListWidget>(readme, "lstChoices");
    QString levels;
    QSet<QString> names;
    for (int row = 0; row < list.count(); ++row) {
        list.setCurrentRow(row);
        const QString name = list.item(row)->text();
        names.insert(name.trimmed());
        levels += QString::number((name.size() - name.trimmed().size()) / 4);
        EXPECT_TRUE(
            Control<QLabel>(readme, "lblDisplay").text().contains(QRegularExpression("^[^{}~\r\t]+$")))
            << qPrintable(name);
    }
    EXPECT_EQ(levels, "0111110111123323112233333122222"
                      "0112211211220");
    EXPECT_EQ(names.size(), 44);
}

TEST(ReadmeTopics, TextJoinsTheLinesOfAParagraph) {
    const ReadmeTopic topic{"", 0,
                            "One\ntwo\n\nThree:\n- four\nfive\n1. six\n    {program}\nseven {address}"};
    EXPECT_EQ(ReadmeText(topic, "P{address}"),
              "One two\n\nThree:\n- four five\n1. six\n    P{address}\nseven " +
                  std::string(kContactAddress));
}

TEST_F(HelpWindow, ChangesStandFromTopToBottom) {
    QWidget& changes = OpenWindow("menuHelpChanges", "frmChanges");
    EXPECT_EQ(Control<QLabel>(changes, "lblVersion").text(), "Version " + ToQString(kVersion));
    int above = -1;
    for (int number = 1; number <= 20; ++number) {
        const auto& label = Control<QLabel>(changes, qPrintable(QString("lblChanges%1").arg(number)));
        EXPECT_TRUE(label.text().startsWith("- ")) << number;
        EXPECT_GT(label.y(), above) << number;
        above = label.y();
    }
    EXPECT_EQ(Control<QLabel>(changes, "lblChanges9").text(), "- Added launch ---> map editor function.");
    Control<QPushButton>(changes, "OKButton").click();
    EXPECT_TRUE(test::WaitFor([&] { return !changes.isVisible() && !Item("menuHelpChanges").isChecked(); }));
}

TEST_F(HelpWindow, AboutShowsTheVersionAndAnIconAndClosesByKey) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        QWidget& about = OpenWindow("menuHelpAbout", "frmAbout");
        EXPECT_EQ(Control<QLabel>(about, "lblVersion").text(), "Version " + ToQString(kVersion));
        EXPECT_FALSE(Control<QLabel>(about, "picIcon").pixmap(Qt::ReturnByValue).isNull());
        QTest::keyClick(&about, key);
        EXPECT_TRUE(test::WaitFor([&] { return !about.isVisible() && !Item("menuHelpAbout").isChecked(); }));
    }
}

} // namespace
} // namespace quillbay
