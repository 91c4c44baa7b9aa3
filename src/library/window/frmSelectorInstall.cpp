#include "common/window/Hourglass.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/InstalledMods.h"
#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"
#include "library/window/JobReport.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

#include <QApplication>
#include <QPointer>

#include <optional>

namespace quillbay {

namespace {

/// What a command takes away while it works, and gives back on every way out.
class BusyCommand {
public:
    BusyCommand(frmSelector& window, QPushButton& button, QAction& item)
        : window_(window), button_(button), item_(item), idleCaption_(button.text()),
          focus_(window.focusWidget()) {
        SetEnabled(false);
        focusMeanwhile_ = window.focusWidget();
    }
    ~BusyCommand() {
        SetCaption(idleCaption_);
        window_.SetMainMenusEnabled(true);
        SetEnabled(true);
        if (focus_ && window_.focusWidget() == focusMeanwhile_) focus_->setFocus();
    }
    BusyCommand(const BusyCommand&) = delete;
    BusyCommand& operator=(const BusyCommand&) = delete;

    void SetCaption(const QString& text) {
        if (button_.text() == text) return;
        button_.setText(text);
        button_.repaint();
    }
    void ShowHourglass() { hourglass_.emplace(); }
    void ShowArrow() { hourglass_.reset(); }

private:
    void SetEnabled(bool enabled) {
        button_.setEnabled(enabled);
        item_.setEnabled(enabled);
    }

    frmSelector& window_;
    QPushButton& button_;
    QAction& item_;
    const QString idleCaption_;
    QPointer<QWidget> focus_;
    QPointer<QWidget> focusMeanwhile_; ///< where the toolkit moved it when the button was disabled
    std::optional<Hourglass> hourglass_;
};

void TellFolderGone(QWidget* window) {
    ShowMessage(window,
                QStringLiteral("The folder you have selected no longer exists. Please check to see if it has "
                               "been renamed or moved."),
                QStringLiteral("Folder not found."), QMessageBox::Warning);
}

/// True when there is a game to work on; tells the user otherwise.
bool HasGame(QWidget* window, GameDirectoryState state) {
    switch (state) {
    case GameDirectoryState::Usable:
        return true;
    case GameDirectoryState::Missing:
        ShowError(window, QStringLiteral("The Tempest II directory was not found, so nothing was changed. "
                                         "Choose it with Manager\\Change T2 Directory."));
        return false;
    case GameDirectoryState::InsideMods:
        ShowError(window,
                  QStringLiteral("The Tempest II directory lies inside the mods folder, so nothing was "
                                 "changed. Choose another one with Manager\\Change T2 Directory."));
        return false;
    }
    return false;
}

} // namespace

bool frmSelector::CanStart(const QAction& item) const {
    return item.isEnabled() && Phase == ProgramPhase::Running;
}

std::optional<ModJob> frmSelector::JobForSelection(QString& displayName) {
    const auto row = ui_->lstMods->SelectedRow();
    if (row && row->text == kNoModsRow) {
        ShowMessage(this,
                    QStringLiteral("You must place a mod into the mods\\(mod's name) folder before you can "
                                   "install. You can find instructions in the Help\\View Readme menu."),
                    QStringLiteral("Install mod first"), QMessageBox::Warning);
        return std::nullopt;
    }
    if (!row || row->path.Empty()) {
        ShowMessage(this, QStringLiteral("Please select a mod."), QStringLiteral("Select a mod"),
                    QMessageBox::Warning);
        return std::nullopt;
    }
    ModJob job{GameDirectory, ModsFolder(ProgramDirectory), row->path};
    if (!HasGame(this, CheckGameDirectory(services_.files, job.gameDirectory, job.modsFolder))) {
        return std::nullopt;
    }
    displayName = ToQString(DisplayName(row->text));
    return job;
}

bool frmSelector::ModStillThere(const ModJob& job) {
    RefreshModList({.hideProgress = true, .keepControls = true, .keepDetails = true});
    if (ModExists(services_.files, job.modsFolder, job.mod)) return true;
    // The list has selected another mod meanwhile.
    ShowModDetails();
    return false;
}

void frmSelector::InstallMod() {
    if (!CanStart(*ui_->menuModInstall)) return;
    InstallResult result;
    QString name;
    {
        BusyCommand busy(*this, *ui_->cmdInstallMod, *ui_->menuModInstall);
        const auto job = JobForSelection(name);
        if (!job) return;
        if (!Confirmed(this,
                       QStringLiteral("You have selected the ") + name +
                           QStringLiteral(" mod. Do you want to install it?"),
                       QStringLiteral("Install ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
                       Describe(Preview(services_.files, PlanInstall(services_.files, *job))))) {
            return;
        }
        busy.SetCaption(QStringLiteral("Installing"));
        if (IsInstalled(services_.files, job->ModFolder()) &&
            !Confirmed(this,
                       QStringLiteral("It appears that the ") + name +
                           QStringLiteral(" mod is already installed. Continue?"),
                       QStringLiteral("Continue installation?"), QMessageBox::Warning)) {
            return;
        }
        busy.ShowHourglass();
        if (!ModStillThere(*job)) {
            busy.ShowArrow();
            TellFolderGone(this);
            return;
        }
        SetMainMenusEnabled(false);
        result = CopyMod(*job, [&busy] { busy.SetCaption(QStringLiteral("Copying files")); });
        RefreshModList({});
    }
    ShowOutcome(Describe(result, name));
    if (const QString why = WhyNotInstalled(result); !why.isEmpty())
        ShowError(this, why);
    else
        QApplication::beep();
}

InstallResult frmSelector::CopyMod(const ModJob& job, const std::function<void()>& onCopying) {
    ShownProgress progress(*ui_->pgbPercent);
    const InstallPlan plan = PlanInstall(services_.files, job);
    const std::size_t shownFiles = details_.ShownFileCount().value_or(plan.items.size());
    return RunInstall(services_.files, plan, [&](JobPhase phase, std::size_t done, std::size_t) {
        if (phase != JobPhase::Copying) return;
        onCopying();
        progress.Set(done, shownFiles);
    });
}

void frmSelector::UninstallMod() {
    if (!CanStart(*ui_->menuModUninstall)) return;
    UninstallResult result;
    QString name;
    {
        BusyCommand busy(*this, *ui_->cmdUninstallMod, *ui_->menuModUninstall);
        const auto job = JobForSelection(name);
        if (!job) return;
        if (!Confirmed(this,
                       QStringLiteral("Are you sure you want to uninstall the ") + name +
                           QStringLiteral(" mod?"),
                       QStringLiteral("Uninstall ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
                       Describe(LookAtInstalled(services_.files, PlanUninstall(services_.files, *job))))) {
            return;
        }
        if (!IsInstalled(services_.files, job->ModFolder()) &&
            !Confirmed(this,
                       QStringLiteral("This mod does not appear to be installed. If there is no backup for a "
                                      "file, it will be deleted and not replaced. Continue anyway?"),
                       QStringLiteral("Mod not installed"), QMessageBox::Warning)) {
            return;
        }
        busy.ShowHourglass();
        if (!ModStillThere(*job)) {
            busy.ShowArrow();
            TellFolderGone(this);
            return;
        }
        busy.SetCaption(QStringLiteral("Uninstalling"));
        SetMainMenusEnabled(false);
        result = TakeModOut(*job, [&busy](const QString& caption) { busy.SetCaption(caption); });
        RefreshModList({.hideProgress = true, .keepControls = true});
    }
    ShowOutcome(Describe(result, name));
    if (const QString why = WhyStillInstalled(result); !why.isEmpty()) ShowError(this, why);
}

UninstallResult frmSelector::TakeModOut(const ModJob& job,
                                        const std::function<void(const QString&)>& setCaption) {
    ShownProgress progress(*ui_->pgbPercent);
    const UninstallPlan plan = PlanUninstall(services_.files, job);
    return RunUninstall(services_.files, plan, [&](JobPhase phase, std::size_t done, std::size_t total) {
        switch (phase) {
        case JobPhase::Deleting:
            setCaption(QStringLiteral("Deleting files"));
            return;
        case JobPhase::Restoring:
            setCaption(QStringLiteral("Restoring backup"));
            progress.Set(done, total, 0, 50);
            return;
        case JobPhase::DeletingBackup:
            setCaption(QStringLiteral("Deleting backup"));
            progress.Set(done, total, 50, 100);
            return;
        case JobPhase::Saving:
        case JobPhase::Copying:
            return;
        }
    });
}

} // namespace quillbay
