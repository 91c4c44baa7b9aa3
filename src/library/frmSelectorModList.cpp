#include "common/PathText.h"
#include "common/QtText.h"
#include "library/InstalledMods.h"
#include "platform/FileSystem.h"
#include "shell/frmSelector.h"
#include "ui_frmSelector.h"

#include <QApplication>
#include <QPointer>

namespace quillbay {

namespace {

/// Takes the controls of a visible refresh away from the user and gives them back.
class RefreshControls {
public:
    explicit RefreshControls(Ui::frmSelector& controls)
        : controls_(controls), focus_(controls.lstMods->window()->focusWidget()) {
        SetEnabled(false);
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~RefreshControls() {
        QApplication::restoreOverrideCursor();
        SetCaption(QStringLiteral("&Refresh Mod List"));
        SetEnabled(true);
        if (focus_) focus_->setFocus();
    }
    RefreshControls(const RefreshControls&) = delete;
    RefreshControls& operator=(const RefreshControls&) = delete;

    void SetCaption(const QString& text) {
        controls_.cmdRefresh->setText(text);
        controls_.cmdRefresh->repaint();
    }

private:
    void SetEnabled(bool enabled) {
        controls_.cmdRefresh->setEnabled(enabled);
        controls_.menuModRefreshModList->setEnabled(enabled);
        controls_.lstMods->setEnabled(enabled);
    }

    Ui::frmSelector& controls_;
    QPointer<QWidget> focus_;
};

} // namespace

void frmSelector::RefreshModList(const RefreshOptions& options) {
    FileSystem& files = services_.files;
    {
        std::optional<RefreshControls> controls;
        if (!options.keepControls) controls.emplace(*ui_);
        PrepareModsFolder(files, ProgramDirectory);
        if (!options.skipCount) {
            if (controls) controls->SetCaption(QStringLiteral("Counting files"));
            CountGameFiles(options);
        }
        if (controls) controls->SetCaption(QStringLiteral("Refresing mod list"));
        ui_->lstMods->SetRows(ScanModLibrary(files, ModsFolder(ProgramDirectory)));
        ui_->lstMods->SelectFirstIfNone();
    }
    emit ModListRebuilt();
    SetButtonsFor(ui_->lstMods->SelectedRow());
    if (!options.keepDetails) ShowModDetails();
}

void frmSelector::lstMods_Click() {
    SetButtonsFor(ui_->lstMods->SelectedRow());
    ShowModDetails();
}

void frmSelector::SetButtonsFor(const std::optional<ModRow>& row) {
    const bool installed = row && !row->path.Empty() &&
                           IsInstalled(services_.files, Join(ModsFolder(ProgramDirectory), row->path.text));
    ui_->cmdUninstallMod->setEnabled(installed);
    ui_->cmdInstallMod->setEnabled(true);
}

void frmSelector::lstMods_MouseDown(QPoint globalPosition) { ui_->menuModCurrentMod->popup(globalPosition); }

void frmSelector::timRefreshModList_Timer() {
    const int interval = isMinimized() ? kRefreshMinimizedEveryMs : kRefreshEveryMs;
    if (timRefreshModList_->interval() != interval) timRefreshModList_->setInterval(interval);
    FileSystem& files = services_.files;
    const bool made = PrepareModsFolder(files, ProgramDirectory);
    const auto rows = ScanModLibrary(files, ModsFolder(ProgramDirectory));
    if (!made && rows == ui_->lstMods->Rows()) return;
    ui_->lstSortItems->clear();
    for (const ModRow& row : rows)
        ui_->lstSortItems->addItem(ToQString(row.text));
    RefreshModList({.hideProgress = true, .keepControls = true, .skipCount = true});
}

void frmSelector::timClickMod_Timer() {
    timClickMod_->stop();
    ShowModDetails();
}

} // namespace quillbay
