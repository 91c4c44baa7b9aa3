#include "library/window/HousekeepingCommands.h"

#include "common/window/BusyGuard.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/ModHousekeeping.h"
#include "library/window/LibraryHost.h"
#include "library/window/ModNameQuestion.h"
#include "platform/PathText.h"

#include <QAction>
#include <QListWidget>
#include <QProgressBar>

namespace quillbay {

namespace {

bool RemovalConfirmed(QWidget* window, const QString& name, RemovalState state) {
    const bool losesBackup = state == RemovalState::LosesBackup;
    return Confirmed(
        window,
        QStringLiteral("Are you sure you want to remove the ") + name +
            QStringLiteral(" mod from your hard drive?"),
        QStringLiteral("Remove ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
        losesBackup
            ? QStringLiteral("The mod or one of its addons is installed. The game's original files that are "
                             "saved in its Backup folder go with it.")
            : QString(),
        losesBackup ? QMessageBox::No : QMessageBox::Yes);
}

/// What is still there of a mod, and why.
QString Remainder(const QString& sentence, const RemovalResult& result) {
    if (result.isMount) return WithPath(sentence, result.stays, {}) + QStringLiteral("\nmount");
    return WithPath(sentence, result.stays, result.error);
}

OutcomeText NothingFound(const ModRow& row) {
    return OutcomeText(QStringLiteral("The folder of ") + ToQString(DisplayName(row.text)) +
                       QStringLiteral(" was not found, so nothing was changed"));
}

} // namespace

HousekeepingCommands::HousekeepingCommands(LibraryHost& main, const HousekeepingControls& controls)
    : main_(main), controls_(controls), files_(main.GetServices().files), window_(&main.MainWindow()) {}

void HousekeepingCommands::RemoveMod() {
    QAction& item = controls_.removeItem;
    const auto row = main_.SelectedMod();
    if (!main_.CanStart(item) || !row || row->path.Empty()) return;
    const BusyGuard busy({&item});
    const std::string mods = LibraryFolder(main_.ProgramDirectory);
    const RemovalState state = CheckRemoval(files_, main_.GameDirectory, mods, main_.ModRows(), row->path);
    if (state == RemovalState::HoldsGame) {
        ShowError(window_, QStringLiteral("The Tempest II directory lies inside this mod, so nothing was "
                                          "removed."));
        return;
    }
    if (!RemovalConfirmed(window_, ToQString(row->text), state)) return;
    const std::string folder = Join(mods, row->path.text);
    RemovalResult removal;
    const bool exists = ModExists(files_, mods, row->path);
    if (exists) {
        ShownProgress progress(controls_.progress);
        removal = RemoveModFolder(files_, folder,
                                  [&](std::size_t done, std::size_t total) { progress.Set(done, total); });
    }
    main_.RefreshModList({});
    if (!exists) return main_.ShowOutcome(NothingFound(*row));
    OutcomeText outcome(ToQString(DisplayName(row->text)) +
                        (removal.error ? QStringLiteral(" could not be removed whole")
                                       : QStringLiteral(" is removed from the disk")));
    if (removal.error) outcome.Note(Remainder(QStringLiteral("Still there:"), removal));
    main_.ShowOutcome(outcome);
    if (removal.error) {
        const QString why =
            removal.isMount
                ? QStringLiteral("Another drive or folder is mounted there. What is mounted was not touched.")
                : QStringLiteral("A part of the mod could not be removed and is still there.");
        ShowError(window_, Remainder(why, removal));
    }
}

void HousekeepingCommands::MakeNewModFolder() {
    if (!main_.CanStart(controls_.newFolderItem)) return;
    const auto answer = AskModName(window_);
    if (!answer) return;
    PrepareLibraryFolder(files_, main_.ProgramDirectory);
    const ModPath made{*answer};
    switch (MakeModFolder(files_, LibraryFolder(main_.ProgramDirectory), made.text)) {
    case NewFolderOutcome::Made:
        main_.ShowOutcome(OutcomeText(QStringLiteral("The mod folder ") + ToQString(made.text) +
                                      QStringLiteral(" is made")));
        break;
    case NewFolderOutcome::Exists:
        ShowMessage(window_, QStringLiteral("Folder already exists."));
        return;
    case NewFolderOutcome::InvalidName:
        TellInvalidName(window_);
        return;
    case NewFolderOutcome::InvalidCharacter:
    case NewFolderOutcome::Failed:
        TellInvalidCharacters(window_);
        return;
    }
    main_.ShowNewMod(made);
}

std::optional<std::string> HousekeepingCommands::FolderForSubfolders(const QAction& item,
                                                                     const QString& question,
                                                                     const QString& title) {
    const auto row = main_.SelectedMod();
    if (!main_.CanStart(item) || !row || row->path.Empty()) return std::nullopt;
    const std::string mods = LibraryFolder(main_.ProgramDirectory);
    bool confirmed = false;
    {
        const BusyGuard busy({&controls_.mods});
        confirmed = Confirmed(window_, question, title);
    }
    controls_.mods.setFocus();
    if (!confirmed) return std::nullopt;
    if (!ModExists(files_, mods, row->path)) {
        main_.ShowOutcome(NothingFound(*row));
        return std::nullopt;
    }
    return Join(mods, row->path.text);
}

void HousekeepingCommands::MakeModSubfolders() {
    const auto folder = FolderForSubfolders(controls_.makeSubfoldersItem,
                                            QStringLiteral("Are you sure you want to make these folders?"),
                                            QStringLiteral("Make subfolders?"));
    if (!folder) return;
    const SubfolderResult result = MakeSubfolders(files_, *folder);
    OutcomeText outcome(QStringLiteral("Made %1 folders in the mod").arg(result.made));
    if (result.error) {
        const QString why =
            WithPath(QStringLiteral("Not all folders could be made."), result.failed, result.error);
        main_.ShowOutcome(outcome.Note(why));
        ShowError(window_, why);
    } else {
        main_.ShowOutcome(outcome);
    }
}

void HousekeepingCommands::RemoveModSubfolders() {
    const auto folder = FolderForSubfolders(controls_.removeSubfoldersItem,
                                            QStringLiteral("Are you sure you want to remove these folders?"),
                                            QStringLiteral("Delete subfolders?"));
    if (!folder) return;
    const std::size_t removed = RemoveSubfolders(files_, *folder);
    main_.ShowOutcome(OutcomeText(QStringLiteral("Removed %1 empty folders from the mod").arg(removed)));
}

} // namespace quillbay
