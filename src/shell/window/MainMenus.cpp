#include "shell/window/MainMenus.h"

#include "common/window/AppSettings.h"
#include "common/window/OutcomeText.h"
#include "library/window/LibraryHost.h"
#include "shell/ManagerItems.h"
#include "ui_frmSelector.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <array>
#include <utility>

namespace quillbay {

namespace {

/// Separators have no name in the window's description: their names in the order of each menu.
struct SeparatorNames {
    QMenu* Ui::frmSelector::*menu;
    std::array<const char*, 2> names; ///< the second may be null
};

const std::array kSeparators{
    SeparatorNames{&Ui::frmSelector::menuSelector, {"menuSelectorSeparator1", "menuManagerSeparator2"}},
    SeparatorNames{&Ui::frmSelector::menuManagerLaunch,
                   {"menuManagerLaunchSeparator1", "menuManagerLaunchSeparator2"}},
    SeparatorNames{&Ui::frmSelector::menuMod, {"menuModSeparator1", "menuModSeparator3"}},
    SeparatorNames{&Ui::frmSelector::menuModCurrentMod,
                   {"modCurrentModSeparator1", "modCurrentModSeparator2"}},
    SeparatorNames{&Ui::frmSelector::menuHelp, {"menuHelpSeperator1"}},
};

using Item = QAction* Ui::frmSelector::*;

/// What depends on the disk.
struct DiskItem {
    Item item;
    bool ManagerItems::*isEnabled;
    const char* whyNot; ///< a sentence without its final point
};

constexpr std::array kDiskItems{
    DiskItem{&Ui::frmSelector::menuManagerLaunchT2, &ManagerItems::launchGame,
             "There is no Tempest2.exe in the Tempest II directory"},
    DiskItem{&Ui::frmSelector::menuManagerInstallMapEditor, &ManagerItems::installMapEditor,
             "The map editor is installed already"},
    DiskItem{&Ui::frmSelector::menuManagerLaunchMapEditor, &ManagerItems::launchMapEditor,
             "The map editor is not installed"},
    DiskItem{&Ui::frmSelector::menuManagerFindModifiedFiles, &ManagerItems::openFinder,
             "There is no FileList.txt. Recompile definition file makes it"},
};

/// What holds and stores a switch.
constexpr std::array<std::pair<Item, const Preference*>, 4> kSwitches{{
    {&Ui::frmSelector::menuManagerSmoothClosingXAxis, &kXAxisPreference},
    {&Ui::frmSelector::menuManagerSmoothClosingYAxis, &kYAxisPreference},
    {&Ui::frmSelector::menuManagerSmoothClosingSimultaneous, &kSimultaneousPreference},
    {&Ui::frmSelector::menuManagerSmoothClosingMainWindowOnly, &kMainWindowOnlyPreference},
}};

} // namespace

MainMenus::MainMenus(LibraryHost& main, Ui::frmSelector& controls) : main_(main), controls_(controls) {
    NameSeparators();
    QObject::connect(controls.menuSelector, &QMenu::aboutToShow, controls.menuSelector,
                     [this] { menuSelector_Click(); });
    for (const auto& [item, preference] : kSwitches) {
        QObject::connect(controls.*item, &QAction::triggered, controls.*item,
                         [this, preference = preference](bool on) {
                             SaveSwitch(main_.GetServices().settings, *preference, on);
                         });
    }
    controls.menuModCurrentMod->setDefaultAction(controls.menuModInstall);
    for (QMenu* menu : {controls.menuSelector, controls.menuManagerModFiles, controls.menuManagerLaunch})
        menu->setToolTipsVisible(true); // why an item is greyed
}

void MainMenus::NameSeparators() {
    for (const SeparatorNames& entry : kSeparators) {
        auto name = entry.names.begin();
        for (QAction* action : (controls_.*entry.menu)->actions())
            if (action->isSeparator() && name != entry.names.end() && *name)
                action->setObjectName(QLatin1String(*name++));
    }
}

void MainMenus::Connect(QAction& item, const std::function<void()>& command) {
    QObject::connect(&item, &QAction::triggered, &item, [this, &item, command] {
        if (MayRun(item)) command();
    });
}

void MainMenus::menuSelector_Click() {
    const ManagerItems items =
        FindManagerItems(main_.GetServices().files, main_.GameDirectory, main_.ProgramDirectory);
    for (const DiskItem& known : kDiskItems) {
        const bool isEnabled = items.*known.isEnabled;
        (controls_.*known.item)->setEnabled(isEnabled);
        (controls_.*known.item)->setToolTip(isEnabled ? QString() : QLatin1String(known.whyNot) + u'.');
    }
}

bool MainMenus::MayRun(const QAction& item) {
    const auto found = std::ranges::find_if(
        kDiskItems, [&](const DiskItem& known) { return controls_.*known.item == &item; });
    // What has no shortcut was chosen in the menu, which has just asked the disk.
    if (found == kDiskItems.end() || item.shortcut().isEmpty()) return true;
    const ManagerItems items =
        FindManagerItems(main_.GetServices().files, main_.GameDirectory, main_.ProgramDirectory);
    if (items.*found->isEnabled) return true;
    main_.ShowOutcome(OutcomeText(QLatin1String(found->whyNot)));
    return false;
}

void MainMenus::ReadSwitches(const AppSettings& settings) {
    for (const auto& [item, preference] : kSwitches)
        (controls_.*item)->setChecked(ReadSwitch(settings, *preference));
}

void MainMenus::SetEnabled(bool enabled) {
    for (QMenu* menu : {controls_.menuSelector, controls_.menuMod, controls_.menuHelp})
        menu->setEnabled(enabled);
}

} // namespace quillbay
