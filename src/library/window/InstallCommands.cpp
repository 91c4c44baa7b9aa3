#include "library/window/InstallCommands.h"

#include "common/window/BusyGuard.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/InstalledMods.h"
#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"
#include "library/window/JobReport.h"
#include "library/window/LibraryHost.h"
#include "library/window/RightsBox.h"

#include <QAction>
#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>

#include <functional>
#include <optional>

namespace quillbay {

namespace {

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

InstallCommands::InstallCommands(LibraryHost& main, const InstallControls& controls)
    : main_(main), controls_(controls), files_(main.GetServices().files), window_(&main.MainWindow()) {}

std::optional<ModJob> InstallCommands::JobForSelection(QString& displayName) {
    const auto row = main_.SelectedMod();
    if (row && row->text == kNoModsRow) {
        ShowMessage(window_,
                    QStringLiteral("You must place a mod into the mods\\(mod's name) folder before you can "
                                   "install. You can find instructions in the Help\\View Readme menu."),
                    QStringLiteral("Install mod first"), QMessageBox::Warning);
        return std::nullopt;
    }
    if (!row || row->path.Empty()) {
        ShowMessage(window_, QStringLiteral("Please select a mod."), QStringLiteral("Select a mod"),
                    QMessageBox::Warning);
        return std::nullopt;
    }
    ModJob job{main_.GameDirectory, LibraryFolder(main_.ProgramDirectory), row->path};
    if (!HasGame(window_, CheckGameDirectory(files_, job.gameDirectory, job.modLibrary))) {
        return std::nullopt;
    }
    displayName = ToQString(DisplayName(row->text));
    return job;
}

bool InstallCommands::ModStillThere(const ModJob& job, BusyGuard& busy) {
    main_.RefreshModList({.keepControls = true, .keepDetails = true});
    if (ModExists(files_, job.modLibrary, job.mod)) return true;
    // The list has selected another mod meanwhile.
    main_.ShowModDetails();
    busy.ShowArrow();
    TellFolderGone(window_);
    return false;
}

void InstallCommands::InstallMod() {
    if (!main_.CanStart(controls_.installItem)) return;
    InstallResult result;
    QString name;
    {
        BusyGuard busy(controls_.install, {&controls_.installItem});
        const auto job = JobForSelection(name);
        if (!job) return;
        if (!Confirmed(window_,
                       QStringLiteral("You have selected the ") + name +
                           QStringLiteral(" mod. Do you want to install it?"),
                       QStringLiteral("Install ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
                       Describe(Preview(files_, PlanInstall(files_, *job))))) {
            return;
        }
        busy.SetCaption(QStringLiteral("Installing"));
        if (IsInstalled(files_, job->FolderInLibrary()) &&
            !Confirmed(window_,
                       QStringLiteral("It appears that the ") + name +
                           QStringLiteral(" mod is already installed. Continue?"),
                       QStringLiteral("Continue installation?"), QMessageBox::Warning)) {
            return;
        }
        busy.ShowHourglass();
        if (!ModStillThere(*job, busy)) return;
        main_.SetMainMenusEnabled(false);
        const auto menusBack = qScopeGuard([this] { main_.SetMainMenusEnabled(true); });
        result = CopyMod(*job, [&busy] { busy.SetCaption(QStringLiteral("Copying files")); });
        main_.RefreshModList({});
    }
    main_.ShowOutcome(Describe(result, name));
    if (result.outcome == InstallOutcome::NoRights)
        TellNoRights(main_, {result.concerned, result.error});
    else if (const QString why = WhyNotInstalled(result); !why.isEmpty())
        ShowError(window_, why);
    else
        QApplication::beep();
}

InstallResult InstallCommands::CopyMod(const ModJob& job, const std::function<void()>& onCopying) {
    ShownProgress progress(controls_.progress);
    const InstallPlan plan = PlanInstall(files_, job);
    const std::size_t shownFiles = main_.ShownFileCount().value_or(plan.items.size());
    return RunInstall(files_, plan, [&](JobPhase phase, std::size_t done, std::size_t total) {
        if (phase == JobPhase::Copying) onCopying();
        progress.Set(done, phase == JobPhase::Copying ? shownFiles : total);
    });
}

void InstallCommands::UninstallMod() {
    if (!main_.CanStart(controls_.uninstallItem)) return;
    UninstallResult result;
    QString name;
    {
        BusyGuard busy(controls_.uninstall, {&controls_.uninstallItem});
        const auto job = JobForSelection(name);
        if (!job) return;
        if (!Confirmed(window_,
                       QStringLiteral("Are you sure you want to uninstall the ") + name +
                           QStringLiteral(" mod?"),
                       QStringLiteral("Uninstall ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
                       Describe(LookAtInstalled(files_, PlanUninstall(files_, *job))))) {
            return;
        }
        if (!IsInstalled(files_, job->FolderInLibrary()) &&
            !Confirmed(window_,
                       QStringLiteral("This mod does not appear to be installed. If there is no backup for a "
                                      "file, it will be deleted and not replaced. Continue anyway?"),
                       QStringLiteral("Mod not installed"), QMessageBox::Warning)) {
            return;
        }
        busy.ShowHourglass();
        if (!ModStillThere(*job, busy)) return;
        busy.SetCaption(QStringLiteral("Uninstalling"));
        main_.SetMainMenusEnabled(false);
        const auto menusBack = qScopeGuard([this] { main_.SetMainMenusEnabled(true); });
        ShownProgress progress(controls_.progress);
        result = TakeModOut(
            *job, [&busy](const QString& caption) { busy.SetCaption(caption); }, progress);
        main_.RefreshModList({.keepControls = true});
    }
    main_.ShowOutcome(Describe(result, name));
    const QString why = WhyStillInstalled(result);
    if (why.isEmpty()) return;
    if (const auto refusal = FindRefusal(result))
        TellNoRights(main_, refusal, why);
    else
        ShowError(window_, why);
}

WriteRefusal InstallCommands::FindRefusal(const UninstallResult& result) {
    if (result.notDeleted.empty() && result.notRestored.empty()) return {};
    return TryToWrite(files_, {main_.GameDirectory});
}

void InstallCommands::UninstallAll(QWidget& asking) {
    if (!main_.CanStart(controls_.uninstallItem)) return;
    UninstallSummary summary;
    {
        BusyGuard busy(controls_.uninstall, {&controls_.uninstallItem});
        const std::string modLibrary = LibraryFolder(main_.ProgramDirectory);
        if (!HasGame(&asking, CheckGameDirectory(files_, main_.GameDirectory, modLibrary))) return;
        ReadFailure failure;
        const auto mods = ListNewestFirst(files_, modLibrary, failure);
        if (failure)
            return ShowError(
                &asking, WithPath(QStringLiteral("Nothing was uninstalled, because this could not be read."),
                                  failure.path, failure.error));
        if (mods.empty()) return main_.ShowOutcome(OutcomeText(QStringLiteral("No mod is installed")));
        if (!Confirmed(&asking,
                       QStringLiteral("Are you sure you want to uninstall all installed mods (%1)?")
                           .arg(mods.size()),
                       QStringLiteral("Uninstall all mods?"), QMessageBox::Question,
                       DescribeOrder(mods, files_.RealPath(main_.GameDirectory).ValueOr({}))))
            return;
        summary = TakeModsOut(mods, busy);
        main_.RefreshModList({.keepControls = true});
    }
    main_.ShowOutcome(Describe(summary));
    const QString why = WhyStillInstalled(summary.total);
    if (why.isEmpty()) return;
    const QString text = ToQString(summary.stopped) + QStringLiteral(": ") + why;
    if (const auto refusal = FindRefusal(summary.total))
        TellNoRights(main_, refusal, text);
    else
        ShowError(&asking, text);
}

UninstallSummary InstallCommands::TakeModsOut(const std::vector<InstalledMod>& mods, BusyGuard& busy) {
    busy.ShowHourglass();
    main_.SetMainMenusEnabled(false);
    const auto menusBack = qScopeGuard([this] { main_.SetMainMenusEnabled(true); });
    ShownProgress progress(controls_.progress);
    const auto share = [&mods](std::size_t done) { return static_cast<int>(done * 100 / mods.size()); };
    UninstallSummary summary;
    for (std::size_t at = 0; at < mods.size() && summary.stopped.empty(); ++at) {
        const ModJob job{main_.GameDirectory, LibraryFolder(main_.ProgramDirectory), mods[at].path};
        // Without its backup, somebody has taken it out while the question was open.
        if (!IsInstalled(files_, job.FolderInLibrary())) continue;
        const QString name = ToQString(mods[at].Name());
        summary.Add(std::string(mods[at].Name()),
                    TakeModOut(job,
                               [&](const QString& caption) {
                                   busy.SetCaption(name + QStringLiteral(": ") + caption);
                               },
                               progress, {share(at), share(at + 1)}));
    }
    return summary;
}

UninstallResult InstallCommands::TakeModOut(const ModJob& job,
                                            const std::function<void(const QString&)>& setCaption,
                                            ShownProgress& progress, std::pair<int, int> share) {
    const int middle = (share.first + share.second) / 2;
    const UninstallPlan plan = PlanUninstall(files_, job);
    return RunUninstall(files_, plan, [&](JobPhase phase, std::size_t done, std::size_t total) {
        switch (phase) {
        case JobPhase::Deleting:
            setCaption(QStringLiteral("Deleting files"));
            progress.Breathe();
            return;
        case JobPhase::Restoring:
            setCaption(QStringLiteral("Restoring backup"));
            progress.Set(done, total, share.first, middle);
            return;
        case JobPhase::DeletingBackup:
            setCaption(QStringLiteral("Deleting backup"));
            progress.Set(done, total, middle, share.second);
            return;
        case JobPhase::Saving:
        case JobPhase::Copying:
            return;
        }
    });
}

} // namespace quillbay
