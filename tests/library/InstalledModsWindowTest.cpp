#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay {
namespace {

class InstalledModsWindow : public test::SelectorFixture {
protected:
    QWidget& Open() { return OpenWindow("menuManagerCheckInstalledMods", "frmInstalledMods"); }
    QStringList Listed(const QWidget& opened) const {
        const auto& list = Control<QListWidget>(opened, "lstCurrentMods");
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.item(row)->text() + (list.item(row)->isSelected() ? " *" : "");
        return texts;
    }
};

TEST_F(InstalledModsWindow, ListsWhatHasABackupInExactSpelling) {
    for (const char* folder : {"Alpha/Addon/Extra", "Beta", "Gamma/backup"})
        MakeFolder(QLatin1String("program/mods/") + folder);
    ASSERT_TRUE(Start());
    QWidget& opened = Open();
    EXPECT_TRUE(Item("menuManagerCheckInstalledMods").isChecked());
    EXPECT_EQ(Listed(opened), QStringList{"(No mods found.) *"});

    // After an installation the main list is rebuilt: addons come with the next activation.
    for (const char* mod : {"Alpha", "Alpha/Addon/Extra", "Beta"})
        MakeFolder(QStringLiteral("program/mods/%1/Backup").arg(mod));
    window->SelectMod({"Beta"});
    window->RefreshModList({});
    EXPECT_EQ(Listed(opened), (QStringList{"Alpha", "Beta *"}));

    window->activateWindow();
    ASSERT_TRUE(test::WaitFor([&] { return !opened.isActiveWindow(); }));
    opened.activateWindow();
    ASSERT_TRUE(test::WaitFor([&] { return Listed(opened).size() == 3; }));
    EXPECT_EQ(Listed(opened), (QStringList{"Alpha *", "    Extra", "Beta"}));

    opened.close();
    EXPECT_TRUE(test::WaitFor([&] { return !Item("menuManagerCheckInstalledMods").isChecked(); }));
}

} // namespace
} // namespace quillbay
