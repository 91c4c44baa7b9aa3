#include "common/window/AppSettings.h"
#include "platform/FileSystem.h"
#include "shell/ManagerItems.h"
#include "shell/window/frmChangeT2Dir.h"
#include "shell/window/frmSelector.h"
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

/// A stored number; 0 when it does not fit.
std::uint8_t ReadByte(const AppSettings& settings, const Preference& preference) {
    const double number = ReadNumber(settings, preference);
    return number >= 0 && number <= 255 ? static_cast<std::uint8_t>(number) : std::uint8_t{0};
}

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

void frmSelector::ConnectMenus() {
    connect(ui_->menuSelector, &QMenu::aboutToShow, this, &frmSelector::menuSelector_Click);
    const std::pair<QAction*, void (frmSelector::*)()> commands[] = {
        {ui_->modChangeT2Directory, &frmSelector::modChangeT2Directory_Click},
        {ui_->menuManagerModFilesRecompile, &frmSelector::menuManagerModFilesRecompile_Click},
        {ui_->menuManagerInstallMapEditor, &frmSelector::InstallMapEditor},
        {ui_->menuManagerLaunchT2, &frmSelector::LaunchGame},
        {ui_->menuManagerLaunchMapEditor, &frmSelector::LaunchMapEditor},
        {ui_->menuQuit, &frmSelector::EndProgram},
        {ui_->menuModInstall, &frmSelector::InstallMod},
        {ui_->menuModRefreshModList, &frmSelector::menuModRefreshModList_Click},
        {ui_->menuModUninstall, &frmSelector::UninstallMod},
        {ui_->menuModCurrentModRemoveMod, &frmSelector::RemoveMod},
        {ui_->menuModCurrentModViewReadme, &frmSelector::OpenSelectedReadme},
        {ui_->menuModCurrentModOpen, &frmSelector::OpenSelectedFolder},
        {ui_->menuModCurrentModSubfolders, &frmSelector::MakeModSubfolders},
        {ui_->menuModCurrentModRemoveSubfolders, &frmSelector::RemoveModSubfolders},
        {ui_->menuModMakeNewFolder, &frmSelector::MakeNewModFolder},
    };
    for (const auto& [item, command] : commands) {
        connect(item, &QAction::triggered, this, [this, item = item, command = command] {
            if (IsEnabledNow(*item)) (this->*command)();
        });
    }
    for (const auto& [item, preference] : kSwitches) {
        connect(ui_.get()->*item, &QAction::triggered, this, [this, preference = preference](bool on) {
            SaveSwitch(services_.settings, *preference, on);
        });
    }
    ConnectOpeners();
    ui_->menuModCurrentMod->setDefaultAction(ui_->menuModInstall);
}

void frmSelector::menuSelector_Click() {
    const ManagerItems items = FindManagerItems(services_.files, GameDirectory, ProgramDirectory);
    for (const auto& [item, isEnabled] : kDiskItems)
        (ui_.get()->*item)->setEnabled(items.*isEnabled);
}

bool frmSelector::IsEnabledNow(const QAction& item) const {
    if (item.shortcut().isEmpty()) return true; // chosen in the menu, which has just asked the disk
    const auto found =
        std::ranges::find_if(kDiskItems, [&](const auto& known) { return ui_.get()->*known.first == &item; });
    return found == kDiskItems.end() ||
           FindManagerItems(services_.files, GameDirectory, ProgramDirectory).*found->second;
}

void frmSelector::modChangeT2Directory_Click() { chooser_->Open(); }

void frmSelector::menuModRefreshModList_Click() { RefreshModList({}); }

void frmSelector::ReadSettings() {
    const AppSettings& settings = services_.settings;
    for (const auto& [item, preference] : kSwitches)
        (ui_.get()->*item)->setChecked(ReadSwitch(settings, *preference));
    FadeIntensity = ReadByte(settings, kFadeIntensityPreference);
    FadeSpeed = ReadByte(settings, kFadeSpeedPreference);
}

void frmSelector::SetMainMenusEnabled(bool enabled) {
    for (QMenu* menu : {ui_->menuSelector, ui_->menuMod, ui_->menuHelp}) {
        menu->setEnabled(enabled);
    }
}

} // namespace quillbay
