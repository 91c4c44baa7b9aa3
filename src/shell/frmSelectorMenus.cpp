#include "platform/FileSystem.h"
#include "shell/AppSettings.h"
#include "shell/ManagerItems.h"
#include "shell/frmChangeT2Dir.h"
#include "shell/frmSelector.h"
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
    onClick(ui_->menuManagerModFilesRecompile, &frmSelector::menuManagerModFilesRecompile_Click);
    onClick(ui_->menuQuit, &frmSelector::EndProgram);
    ConnectLaunchMenus();
    onClick(ui_->menuModInstall, &frmSelector::InstallMod);
    onClick(ui_->menuModRefreshModList, [this] { RefreshModList({}); });
    onClick(ui_->menuModUninstall, &frmSelector::UninstallMod);
    onClick(ui_->menuModCurrentModRemoveMod, &frmSelector::RemoveMod);
    onClick(ui_->menuModCurrentModSubfolders, &frmSelector::MakeModSubfolders);
    onClick(ui_->menuModCurrentModRemoveSubfolders, &frmSelector::RemoveModSubfolders);
    onClick(ui_->menuModMakeNewFolder, &frmSelector::MakeNewModFolder);
    ui_->menuModCurrentMod->setDefaultAction(ui_->menuModInstall);
}

void frmSelector::menuSelector_Click() {
    const ManagerItems items = FindManagerItems(services_.files, GameDirectory, ProgramDirectory);
    ui_->menuManagerLaunchT2->setEnabled(items.hasGameExecutable);
    ui_->menuManagerInstallMapEditor->setEnabled(!items.hasMapEditor);
    ui_->menuManagerLaunchMapEditor->setEnabled(items.hasMapEditor);
    ui_->menuManagerFindModifiedFiles->setEnabled(items.hasFileList);
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
