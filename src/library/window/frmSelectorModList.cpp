#include "common/window/Hourglass.h"
#include "common/window/QtText.h"
#include "common/window/ShownProgress.h"
#include "library/GameDirectory.h"
#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/window/IntakeCommands.h"
#include "platform/PathText.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

#include <QMenu>
#include <QPointer>

#include <optional>

namespace quillbay {

namespace {

/// Takes the controls of a visible refresh away from the user and gives them back.
class RefreshControls {
public:
    explicit RefreshControls(Ui::frmSelector& controls)
        : controls_(controls), focus_(controls.lstMods->window()->focusWidget()) {
        SetEnabled(false);
    }
    ~RefreshControls() {
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
    const Hourglass hourglass_;
};

/// Gives the list these texts; one that has them already is left alone.
void FillSortItems(QListWidget& list, const std::vector<ModRow>& rows) {
    QStringList texts;
    for (const ModRow& row : rows)
        texts += ToQString(row.text);
    bool isFilled = list.count() == texts.size();
    for (int row = 0; isFilled && row < list.count(); ++row)
        isFilled = list.item(row)->text() == texts[row];
    if (isFilled) return;
    list.clear();
    list.addItems(texts);
}

} // namespace

void frmSelector::RefreshModList(const RefreshOptions& options) {
    FileSystem& files = services_.files;
    {
        std::optional<RefreshControls> controls;
        if (!options.keepControls) controls.emplace(*ui_);
        PrepareModsFolder(files, ProgramDirectory);
        if (controls && !options.skipCount) {
            controls->SetCaption(QStringLiteral("Counting files"));
            CountGameFiles(options);
        }
        if (controls) controls->SetCaption(QStringLiteral("Refresing mod list"));
        ui_->lstMods->SetRows(ScanModLibrary(files, ModsFolder(ProgramDirectory)));
    }
    emit Signals.ModListRebuilt();
    SetButtonsFor(ui_->lstMods->SelectedRow());
    if (!options.keepDetails) ShowModDetails();
}

void frmSelector::CountGameFiles(const RefreshOptions& options) {
    if (!IsExistingFolder(services_.files, GameDirectory)) {
        ui_->lblT2NumOfFiles->setText(QLatin1String(kNoFolderCount));
        return;
    }
    std::optional<ShownProgress> progress;
    if (!options.hideProgress) progress.emplace(*ui_->pgbPercent);
    const std::size_t total =
        CountKnownFiles(services_.files, GameDirectory, [&](std::size_t position, std::size_t) {
            if (progress) progress->Set(position + 1, kGameFolderCount);
            return true;
        });
    ui_->lblT2NumOfFiles->setText(QString::number(total));
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

void frmSelector::lstMods_MouseDown(QPoint globalPosition) {
    QMenu& menu = ModRows().empty() ? intake_->MenuForNoMods() : *ui_->menuModCurrentMod;
    menu.popup(globalPosition);
}

void frmSelector::timRefreshModList_Timer() {
    const int interval = isMinimized() ? kRefreshMinimizedEveryMs : kRefreshEveryMs;
    if (timRefreshModList_->interval() != interval) timRefreshModList_->setInterval(interval);
    FileSystem& files = services_.files;
    const bool made = PrepareModsFolder(files, ProgramDirectory);
    const auto rows = ScanModLibrary(files, ModsFolder(ProgramDirectory));
    FillSortItems(*ui_->lstSortItems, rows);
    if (!made && rows == ui_->lstMods->Rows()) return;
    RefreshModList({.hideProgress = true, .keepControls = true, .skipCount = true});
}

void frmSelector::timClickMod_Timer() {
    timClickMod_->stop();
    ShowModDetails();
}

} // namespace quillbay
