#include "platform/FileSystem.h"
#include "shell/AppSettings.h"
#include "shell/ManagerItems.h"
#include "shell/frmChangeT2Dir.h"
#include "shell/frmSelector.h"
#include "ui_frmSelector.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
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

void frmSelector::ConnectMenus() {
    const auto onClick = [this](QAction* item, auto handler) {
        connect(item, &QAction::triggered, this, handler);
    };
    connect(ui_->menuSelector, &QMenu::aboutToShow, this, &frmSelector::menuSelector_Click);
    onClick(ui_->modChangeT2Directory, &frmSelector::modChangeT2Directory_Click);
    onClick(ui_->menuManagerSmoothClosingXAxis, [this](bool on) { SaveSwitch("XAxis", on); });
    onClick(ui_->menuManagerSmoothClosingYAxis, [this](bool on) { SaveSwitch("YAxis", on); });
    onClick(ui_->menuManagerSmoothClosingSimultaneous, [this](bool on) { SaveSwitch("Simultaneous", on); });
    onClick(ui_->menuManagerSmoothClosingMainWindowOnly,
            [this](bool on) { SaveSwitch("Main Window Only", on); });
    onClick(ui_->menuQuit, &frmSelector::EndProgram);
    onClick(ui_->menuModInstall, &frmSelector::InstallMod);
    onClick(ui_->menuModRefreshModList, [this] { RefreshModList({}); });
    onClick(ui_->menuModUninstall, &frmSelector::UninstallMod);
    ui_->menuModCurrentMod->setDefaultAction(ui_->menuModInstall);
    for (const auto item : kNotYetServed) {
        ((*ui_).*item)->setEnabled(false);
    }
}

void frmSelector::EnableIfServed(QAction* item, bool enabled) {
    const bool served = std::none_of(kNotYetServed.begin(), kNotYetServed.end(),
                                     [&](auto member) { return (*ui_).*member == item; });
    item->setEnabled(served && enabled);
}

void frmSelector::menuSelector_Click() {
    const ManagerItems items = FindManagerItems(services_.files, GameDirectory, ProgramDirectory);
    EnableIfServed(ui_->menuManagerLaunchT2, items.hasGameExecutable);
    EnableIfServed(ui_->menuManagerInstallMapEditor, !items.hasMapEditor);
    EnableIfServed(ui_->menuManagerLaunchMapEditor, items.hasMapEditor);
    EnableIfServed(ui_->menuManagerFindModifiedFiles, items.hasFileList);
}

void frmSelector::modChangeT2Directory_Click() { chooser_->Open(); }

void frmSelector::SaveSwitch(const char* key, bool on) {
    services_.settings.SaveAppSetting(QStringLiteral("Smooth Closing"), QLatin1String(key),
                                      on ? QStringLiteral("True") : QStringLiteral("False"));
}

void frmSelector::SetMainMenusEnabled(bool enabled) {
    for (QMenu* menu : {ui_->menuSelector, ui_->menuMod, ui_->menuHelp}) {
        menu->setEnabled(enabled);
    }
}

} // namespace quillbay
