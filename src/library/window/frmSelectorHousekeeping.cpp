#include "common/window/Disabled.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/ModHousekeeping.h"
#include "library/NewModFolder.h"
#include "platform/PathText.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

namespace quillbay {

namespace {

bool RemovalConfirmed(QWidget* window, const QString& name, RemovalState state) {
    return Confirmed(
        window,
        QStringLiteral("Are you sure you want to remove the ") + name +
            QStringLiteral(" mod from your hard drive?"),
        QStringLiteral("Remove ") + name + QStringLiteral(" mod?"), QMessageBox::Question,
        state == RemovalState::LosesBackup
            ? QStringLiteral("The mod or one of its addons is installed. The game's original files that are "
                             "saved in its Backup folder go with it.")
            : QString());
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

void frmSelector::RemoveMod() {
    QAction& item = *ui_->menuModCurrentModRemoveMod;
    const auto row = SelectedMod();
    if (!CanStart(item) || !row || row->path.Empty()) return;
    const Disabled busy(item);
    FileSystem& files = services_.files;
    const std::string mods = ModsFolder(ProgramDirectory);
    const RemovalState state = CheckRemoval(files, GameDirectory, mods, ModRows(), row->path);
    if (state == RemovalState::HoldsGame) {
        ShowError(this, QStringLiteral("The Tempest II directory lies inside this mod, so nothing was "
                                       "removed."));
        return;
    }
    if (!RemovalConfirmed(this, ToQString(row->text), state)) return;
    const std::string folder = Join(mods, row->path.text);
    RemovalResult removal;
    const bool exists = ModExists(files, mods, row->path);
    if (exists) {
        ShownProgress progress(*ui_->pgbPercent);
        removal = RemoveModFolder(files, folder,
                                  [&](std::size_t done, std::size_t total) { progress.Set(done, total); });
    }
    RefreshModList({});
    if (!exists) return ShowOutcome(NothingFound(*row));
    OutcomeText outcome(ToQString(DisplayName(row->text)) +
                        (removal.error ? QStringLiteral(" could not be removed whole")
                                       : QStringLiteral(" is removed from the disk")));
    if (removal.error) outcome.Note(Remainder(QStringLiteral("Still there:"), removal));
    ShowOutcome(outcome);
    if (removal.error) {
        const QString why =
            removal.isMount
                ? QStringLiteral("Another drive or folder is mounted there. What is mounted was not touched.")
                : QStringLiteral("A part of the mod could not be removed and is still there.");
        ShowError(this, Remainder(why, removal));
    }
}

void frmSelector::MakeNewModFolder() {
    if (!CanStart(*ui_->menuModMakeNewFolder)) return;
    const auto answer = AskText(this, QStringLiteral("Please enter the name of the folder."),
                                QStringLiteral("Make new folder"));
    if (!answer || answer->isEmpty()) return;
    FileSystem& files = services_.files;
    PrepareModsFolder(files, ProgramDirectory);
    const ModPath made{FromQString(*answer)};
    switch (MakeModFolder(files, ModsFolder(ProgramDirectory), made.text)) {
    case NewFolderOutcome::Made:
        ShowOutcome(OutcomeText(QStringLiteral("The mod folder ") + *answer + QStringLiteral(" is made")));
        break;
    case NewFolderOutcome::Exists:
        ShowMessage(this, QStringLiteral("Folder already exists."));
        return;
    case NewFolderOutcome::InvalidName:
        ShowMessage(this, QStringLiteral("Invalid name."));
        return;
    case NewFolderOutcome::InvalidCharacter:
    case NewFolderOutcome::Failed:
        ShowError(this, QStringLiteral("An error has occurred. It is possible that you have entered invalid "
                                       "characters. Please enter a different name."));
        return;
    }
    RefreshModList({.hideProgress = true, .keepControls = true, .skipCount = true, .keepDetails = true});
    const auto before = SelectedMod();
    SelectMod(made);
    // Another row's selection shows its details by itself.
    if (before && before->path == made) ShowModDetails();
}

std::optional<std::string> frmSelector::FolderForSubfolders(const QAction& item, const QString& question,
                                                            const QString& title) {
    const auto row = SelectedMod();
    if (!CanStart(item) || !row || row->path.Empty()) return std::nullopt;
    const std::string mods = ModsFolder(ProgramDirectory);
    bool confirmed = false;
    {
        const Disabled busy(*ui_->lstMods);
        confirmed = Confirmed(this, question, title);
    }
    ui_->lstMods->setFocus();
    if (!confirmed) return std::nullopt;
    if (!ModExists(services_.files, mods, row->path)) {
        ShowOutcome(NothingFound(*row));
        return std::nullopt;
    }
    return Join(mods, row->path.text);
}

void frmSelector::MakeModSubfolders() {
    const auto folder = FolderForSubfolders(*ui_->menuModCurrentModSubfolders,
                                            QStringLiteral("Are you sure you want to make these folders?"),
                                            QStringLiteral("Make subfolders?"));
    if (!folder) return;
    const SubfolderResult result = MakeSubfolders(services_.files, *folder);
    OutcomeText outcome(QStringLiteral("Made %1 folders in the mod").arg(result.made));
    if (result.error) {
        const QString why =
            WithPath(QStringLiteral("Not all folders could be made."), result.failed, result.error);
        ShowOutcome(outcome.Note(why));
        ShowError(this, why);
    } else {
        ShowOutcome(outcome);
    }
}

void frmSelector::RemoveModSubfolders() {
    const auto folder = FolderForSubfolders(*ui_->menuModCurrentModRemoveSubfolders,
                                            QStringLiteral("Are you sure you want to remove these folders?"),
                                            QStringLiteral("Delete subfolders?"));
    if (!folder) return;
    const std::size_t removed = RemoveSubfolders(services_.files, *folder);
    ShowOutcome(OutcomeText(QStringLiteral("Removed %1 empty folders from the mod").arg(removed)));
}

} // namespace quillbay
