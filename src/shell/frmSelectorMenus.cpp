#include "shell/frmSelector.h"

#include "library/frmInstalledMods.h"
#include "platform/FileSystem.h"
#include "shell/AppSettings.h"
#include "shell/frmChangeT2Dir.h"
#include "ui_frmSelector.h"

#include <QAction>
#include <QMenu>

#include <array>
#include <initializer_list>

namespace quillbay {

namespace {

/// Separators have no name in the window's description: their names in the order of each menu.
struct SeparatorNames {
    const char* menu;
    std::initializer_list<const char*> names;
};

const std::array kSeparators{
    SeparatorNames{"menuSelector", {"menuSelectorSeparator1", "menuManagerSeparator2"}},
    SeparatorNames{"menuManagerLaunch", {"menuManagerLaunchSeparator1", "menuManagerLaunchSeparator2"}},
    SeparatorNames{"menuMod", {"menuModSeparator1", "menuModSeparator3"}},
    SeparatorNames{"menuModCurrentMod", {"modCurrentModSeparator1", "modCurrentModSeparator2"}},
    SeparatorNames{"menuHelp", {"menuHelpSeperator1"}},
};

/// Items whose command does not exist yet. They stay disabled, whatever else would enable them.
constexpr std::array kNotYetServed{
    &Ui::frmSelector::menuManagerFileInstaller,
    &Ui::frmSelector::menuManagerFindModifiedFiles,
    &Ui::frmSelector::menuManagerModFilesRecompile,
    &Ui::frmSelector::menuManagerInstallMapEditor,
    &Ui::frmSelector::menuManagerOptions,
    &Ui::frmSelector::menuManagerLaunchT2,
    &Ui::frmSelector::menuManagerLaunchMapEditor,
    &Ui::frmSelector::menuManagarLaunchT2Dir,
    &Ui::frmSelector::menuManagerLaunchQuillbayDir,
    &Ui::frmSelector::menuManagerLaunchNimb,
    &Ui::frmSelector::menuManagerLaunchZeph,
    &Ui::frmSelector::menuManagerLaunchLodestar,
    &Ui::frmSelector::menuModCompatablility,
    &Ui::frmSelector::menuModEdit,
    &Ui::frmSelector::menuModAnalyzeMod,
    &Ui::frmSelector::menuModTechTree,
    &Ui::frmSelector::menuModOpenOdfChecker,
    &Ui::frmSelector::menuModCurrentModRemoveMod,
    &Ui::frmSelector::menuModCurrentModViewReadme,
    &Ui::frmSelector::menuModCurrentModOpen,
    &Ui::frmSelector::menuModCurrentModSubfolders,
    &Ui::frmSelector::menuModCurrentModRemoveSubfolders,
    &Ui::frmSelector::menuModMakeNewFolder,
    &Ui::frmSelector::menuHelpAbout,
    &Ui::frmSelector::menuHelpViewReadme,
    &Ui::frmSelector::menuHelpChanges,
};

} // namespace

void frmSelector::NameSeparators() {
    for (const SeparatorNames& entry : kSeparators) {
        auto name = entry.names.begin();
        for (QAction* action : findChild<QMenu*>(QLatin1String(entry.menu))->actions()) {
            if (action->isSeparator() && name != entry.names.end()) {
                action->setObjectName(QLatin1String(*name++));
            }
        }
    }
}
