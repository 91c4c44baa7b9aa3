#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/GameDirectory.h"
#include "modinfo/ModDetails.h"
#include "platform/PathText.h"
#include "platform/ShellOpener.h"
#include "shell/BatchFile.h"
#include "shell/ManagerItems.h"
#include "shell/window/MenuWindows.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

#include <utility>

namespace quillbay {

namespace {

void TellGameMissing(QWidget* window, const QString& unwritten) {
    ShowError(window, QStringLiteral("The Tempest II directory was not found, so ") + unwritten +
                          QStringLiteral(" could not be written. Choose the directory with Manager\\Change "
                                         "T2 Directory."));
}

/// A control character by its number, which can be seen.
QString Visible(const std::string& character) {
    const QString text = ToQString(character);
    const char32_t code = text.toUcs4().front();
    return QChar::isPrint(code) ? text : QStringLiteral("U+%1").arg(code, 4, 16, QLatin1Char('0'));
}

void ReportUnwritten(QWidget* window, const BatchResult& batch) {
    const QString name = ToQString(batch.name);
    switch (batch.outcome) {
    case BatchOutcome::Written:
        return;
    case BatchOutcome::GameMissing:
        TellGameMissing(window, name);
        return;
    case BatchOutcome::NoDosPath:
        ShowError(window, WithPath(name + QStringLiteral(" could not be written, because Windows programs "
                                                         "have no path to this directory."),
                                   batch.path, batch.error));
        return;
    case BatchOutcome::Unencodable:
        ShowError(window, name +
                              QStringLiteral(" was not written, because a batch file cannot hold this "
                                             "character: ") +
                              Visible(batch.character));
        return;
    case BatchOutcome::NotWritten:
        ShowError(window, WithPath(QStringLiteral("This file could not be written, so nothing was started."),
                                   batch.path, batch.error));
        return;
    }
}

} // namespace

void frmSelector::ConnectOpeners() {
    const std::pair<QAction*, const char*> sites[] = {
        {ui_->menuManagerLaunchNimb, "https://tempest-universe.example/"},
        {ui_->menuManagerLaunchZeph, "https://tempest-fleet-command.example/"},
        {ui_->menuManagerLaunchLodestar, "https://lodestar.example/"},
    };
    for (const auto& [item, address] : sites)
        connect(item, &QAction::triggered, this, [this, address = address] { Open(address); });
    const std::pair<QAction*, const std::string&> folders[] = {
        {ui_->menuManagarLaunchT2Dir, GameDirectory},
        {ui_->menuManagerLaunchQuillbayDir, ProgramDirectory},
    };
    for (const auto& [item, folder] : folders)
        connect(item, &QAction::triggered, this, [this, &folder = folder] { OpenFolder(folder); });
}

void frmSelector::LaunchGame() {
    if (Phase == ProgramPhase::Running && windows_->MayEnd())
        StartBatchFile(WriteGameBatch(services_.files, GameDirectory, GamePrefix()));
}

void frmSelector::LaunchMapEditor() {
    if (Phase != ProgramPhase::Running) return;
    const auto name =
        AskText(this, QStringLiteral("Please enter the name of the file you want to have edited."),
                QStringLiteral("Enter file name"));
    if (Phase != ProgramPhase::Running) return;
    const std::string entered = FromQString(name.value_or(QString()));
    if (entered.find_first_not_of(' ') == std::string::npos) {
        ShowMessage(this, QStringLiteral("Invalid name."));
        return;
    }
    if (windows_->MayEnd())
        StartBatchFile(WriteMapEditorBatch(services_.files, GameDirectory, entered, GamePrefix()));
}

void frmSelector::InstallMapEditor() {
    if (Phase != ProgramPhase::Running) return;
    if (!IsExistingFolder(services_.files, GameDirectory)) {
        TellGameMissing(this, ToQString(kMapEditorMarkers[0]) + QStringLiteral(" and ") +
                                  ToQString(kMapEditorMarkers[1]));
        return;
    }
    const MarkerFailure failure = WriteMapEditorMarkers(services_.files, GameDirectory);
    if (failure.error) {
        ShowError(this, WithPath(QStringLiteral("The map editor was not installed, because this file could "
                                                "not be written."),
                                 failure.path, failure.error));
        return;
    }
    ShowOutcome(OutcomeText(QStringLiteral("The map editor is installed"))
                    .Count(std::size(kMapEditorMarkers), QStringLiteral("made")));
    if (Confirmed(this, QStringLiteral("Installation complete. Would you like to launch Tempest II now?"),
                  QStringLiteral("Installation complete"))) {
        LaunchGame();
    }
}

void frmSelector::StartBatchFile(const BatchResult& batch) {
    if (batch.outcome != BatchOutcome::Written) {
        ReportUnwritten(this, batch);
        return;
    }
    Ignore(services_.shell.OpenWithShell(batch.path, GameDirectory, GamePrefix()));
    EndProgram();
}

std::string frmSelector::GamePrefix() const {
    return GameDirectory == registeredGame_.path ? registeredGame_.prefix : std::string();
}

void frmSelector::OpenFolder(const std::string& folder) {
    if (IsExistingFolder(services_.files, folder)) Open(folder);
}

void frmSelector::OpenSelectedFolder() {
    const auto row = SelectedMod();
    if (row && ModExists(services_.files, ModsFolder(ProgramDirectory), row->path))
        Open(Join(ModsFolder(ProgramDirectory), row->path.text));
}

void frmSelector::OpenSelectedReadme() {
    const auto row = SelectedMod();
    if (!row || row->path.Empty()) return;
    const std::string folder = Join(ModsFolder(ProgramDirectory), row->path.text);
    const auto entries = services_.files.List(folder, Detail::Names);
    const DirEntry* readme = entries ? FindReadme(*entries) : nullptr;
    if (readme) Open(Join(folder, readme->name));
}

void frmSelector::Open(std::string_view target) {
    // A failure is the desktop's to tell.
    Ignore(services_.shell.OpenWithShell(target));
}

} // namespace quillbay
