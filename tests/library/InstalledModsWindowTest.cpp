#include "library/frmInstalledMods.h"
#include "support/AnswerBoxesWindow.h"
#include "support/TestHost.h"
#include "support/TestServices.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

class InstalledModsWindow : public testing::Test {
protected:
    QStringList Listed() {
        const auto* list = window.findChild<QListWidget*>("lstCurrentMods");
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts += list->item(row)->text();
        return texts;
    }
    QString Selected() {
        const auto selected = window.findChild<QListWidget*>("lstCurrentMods")->selectedItems();
        return selected.size() == 1 ? selected.front()->text() : QString();
    }

    test::TestHost host;
    test::TestServices test;
    QAction item;
    std::vector<ModRow> rows{{"Alpha", {"Alpha"}},
                             {"    Extra", {"Alpha\\Addon\\Extra"}},
                             {"Beta", {"Beta"}},
                             {"Gamma", {"Gamma"}}};
    frmInstalledMods window{host, &item, test.services, [this] { return rows; }};
};

TEST_F(InstalledModsWindow, ListsWhatHasABackupInExactSpelling) {
    test.MakeFolder("program/mods/Beta/Backup");
    test.MakeFolder("program/mods/Alpha/Addon/Extra/Backup");
    test.MakeFolder("program/mods/Gamma/backup");
    window.Open();
    EXPECT_TRUE(item.isChecked());
    EXPECT_EQ(Listed(), (QStringList{"    Extra", "Beta"}));
    EXPECT_EQ(Selected(), "    Extra");

    // After an installation the main list is rebuilt: the addon comes back with the next activation.
    test.MakeFolder("program/mods/Alpha/Backup");
    window.Rebuild(rows);
    EXPECT_EQ(Listed(), (QStringList{"Alpha", "Beta"}));
    window.SelectRow("Beta");
    EXPECT_EQ(Selected(), "Beta");
    window.SelectRow("beta");
    EXPECT_EQ(Selected(), "Beta");

    host.main.activateWindow();
    ASSERT_TRUE(test::WaitFor([&] { return !window.isActiveWindow(); }));
    window.activateWindow();
    ASSERT_TRUE(test::WaitFor([&] { return Listed().size() == 3; }));
    EXPECT_EQ(Listed(), (QStringList{"Alpha", "    Extra", "Beta"}));
}

TEST_F(InstalledModsWindow, SaysThatNothingIsInstalled) {
    window.Open();
    EXPECT_EQ(Listed(), QStringList{"(No mods found.)"});
    EXPECT_EQ(Selected(), "(No mods found.)");
    rows.clear();
    window.Rebuild(rows);
    EXPECT_EQ(Listed(), QStringList{"(No mods found.)"});
}

} // namespace
} // namespace quillbay
