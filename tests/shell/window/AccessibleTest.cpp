#include "support/SelectorFixtureWindow.h"

#include <QAccessible>
#include <QtWidgets>

namespace quillbay::test {
namespace {

class Accessible : public SelectorFixture {};

TEST_F(Accessible, EveryControlThatTabReachesHasAName) {
    Write("program/FileList.txt", {});
    ASSERT_TRUE(Start());
    for (const char* item :
         {"menuManagerCheckInstalledMods", "menuManagerFileInstaller", "menuManagerFindModifiedFiles",
          "menuManagerOptions", "menuModCompatablility", "menuModEdit", "menuModAnalyzeMod",
          "menuModTechTree", "menuModOpenOdfChecker", "menuHelpAbout", "menuHelpViewReadme",
          "menuHelpChanges", "modChangeT2Directory"})
        Item(item).trigger();
    const QSet<QString> neverShown{"lstSortItems", "lstPacker"};
    int windows = 0;
    for (const QWidget* opened : QApplication::topLevelWidgets()) {
        windows += opened->isVisible() && opened->objectName().startsWith("frm");
        for (QWidget* control : opened->findChildren<QWidget*>(QRegularExpression("^(?!qt_)."))) {
            if (!(control->focusPolicy() & Qt::TabFocus) || neverShown.contains(control->objectName()))
                continue;
            auto& said = *QAccessible::queryAccessibleInterface(control);
            const bool isBox = qobject_cast<const QComboBox*>(control); // whose name is its text
            EXPECT_FALSE(isBox ? said.relations(QAccessible::Label).empty()
                               : said.text(QAccessible::Name).isEmpty())
                << qPrintable(opened->objectName() + '/' + control->objectName());
        }
    }
    EXPECT_EQ(windows, 14);
}

} // namespace
} // namespace quillbay::test
