#include "shell/window/MainMenus.h"

#include "common/window/AppSettings.h"
#include "library/window/LibraryHost.h"
#include "shell/ManagerItems.h"
#include "ui_frmSelector.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace quillbay {

namespace {

/// Separators have no name in the window's description: their names in the order of each menu.
struct SeparatorNames {
    QMenu* Ui::frmSelector::*menu;
    std::initializer_list<const char*> names;
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
constexpr std::array<std::pair<Item, bool ManagerItems::*>, 4> kDiskItems{{
    {&Ui::frmSelector::menuManagerLaunchT2, &ManagerItems::launchGame},
    {&Ui::frmSelector::menuManagerInstallMapEditor, &ManagerItems::installMapEditor},
    {&Ui::frmSelector::menuManagerLaunchMapEditor, &ManagerItems::launchMapEditor},
    {&Ui::frmSelector::menuManagerFindModifiedFiles, &ManagerItems::openFinder},
}};

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
}

void MainMenus::NameSeparators() {
    for (const SeparatorNames& entry : kSeparators) {
        auto name = entry.names.begin();
        for (QAction* action : (controls_.*entry.menu)->actions())
            if (action->isSeparator() && name != entry.names.end())
                action->setObjectName(QLatin1String(*name++));
    }
}

void MainMenus::Connect(QAction& item, const std::function<void()>& command) {
    QObject::connect(&item, &QAction::triggered, &item, [this, &item, command] {
        if (IsEnabledNow(item)) command();
    });
}

void MainMenus::menuSelector_Click() {
    const ManagerItems items =
        FindManagerItems(main_.GetServices().files, main_.GameDirectory, main_.ProgramDirectory);
    for (const auto& [item, isEnabled] : kDiskItems)
        (controls_.*item)->setEnabled(items.*isEnabled);
}

bool MainMenus::IsEnabledNow(const QAction& item) const {
    if (item.shortcut().isEmpty()) return true; // chosen in the menu, which has just asked the disk
    const auto found =
        std::ranges::find_if(kDiskItems, [&](const auto& known) { return controls_.*known.first == &item; });
    return found == kDiskItems.end() ||
           FindManagerItems(main_.GetServices().files, main_.GameDirectory, main_.ProgramDirectory).*
               found->second;
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
