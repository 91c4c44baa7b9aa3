#include "shell/window/LaunchCommands.h"

#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/GameDirectory.h"
#include "library/WriteRefusal.h"
#include "library/window/RightsBox.h"
#include "modinfo/ModDetails.h"
#include "platform/PathText.h"
#include "platform/ShellOpener.h"
#include "shell/BatchFile.h"
#include "shell/ManagerItems.h"
#include "shell/window/frmSelector.h"

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

void ReportUnwritten(LibraryHost& main, const BatchResult& batch) {
    QWidget* window = &main.MainWindow();
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
    case BatchOutcome::NoRights:
        TellNoRights(main, {batch.path, batch.error});
        return;
    case BatchOutcome::NotWritten:
        ShowError(window, WithPath(QStringLiteral("This file could not be written, so nothing was started."),
                                   batch.path, batch.error));
        return;
    }
}

} // namespace

LaunchCommands::LaunchCommands(frmSelector& main) : main_(main), files_(main.GetServices().files) {}

void LaunchCommands::LaunchGame() {
    if (main_.Phase == ProgramPhase::Running && main_.MayEnd())
        StartBatchFile(WriteGameBatch(files_, main_.GameDirectory, main_.GamePrefix()));
}

void LaunchCommands::LaunchMapEditor() {
    if (main_.Phase != ProgramPhase::Running) return;
    const auto name =
        AskText(&main_, QStringLiteral("Please enter the name of the file you want to have edited."),
                QStringLiteral("Enter file name"));
    if (main_.Phase != ProgramPhase::Running) return;
    const std::string entered = FromQString(name.value_or(QString()));
    if (entered.find_first_not_of(' ') == std::string::npos) {
        ShowMessage(&main_, QStringLiteral("Invalid name."));
        return;
    }
    if (main_.MayEnd())
        StartBatchFile(WriteMapEditorBatch(files_, main_.GameDirectory, entered, main_.GamePrefix()));
}

void LaunchCommands::InstallMapEditor() {
    if (main_.Phase != ProgramPhase::Running) return;
    if (!IsExistingFolder(files_, main_.GameDirectory)) {
        TellGameMissing(&main_, ToQString(kMapEditorMarkers[0]) + QStringLiteral(" and ") +
                                    ToQString(kMapEditorMarkers[1]));
        return;
    }
    if (const auto refusal = TryToWrite(files_, {main_.GameDirectory})) {
        TellNoRights(main_, refusal);
        return;
    }
    const MarkerFailure failure = WriteMapEditorMarkers(files_, main_.GameDirectory);
    if (failure.error) {
        ShowError(&main_, WithPath(QStringLiteral("The map editor was not installed, because this file could "
                                                  "not be written."),
                                   failure.path, failure.error));
        return;
    }
    main_.ShowOutcome(OutcomeText(QStringLiteral("The map editor is installed"))
                          .Count(std::size(kMapEditorMarkers), QStringLiteral("made")));
    if (Confirmed(&main_, QStringLiteral("Installation complete. Would you like to launch Tempest II now?"),
                  QStringLiteral("Installation complete"))) {
        LaunchGame();
    }
}

void LaunchCommands::StartBatchFile(const BatchResult& batch) {
    if (batch.outcome != BatchOutcome::Written) {
        ReportUnwritten(main_, batch);
        return;
    }
    Ignore(main_.GetServices().shell.OpenWithShell(batch.path, main_.GameDirectory, main_.GamePrefix()));
    main_.EndProgram();
}

void LaunchCommands::OpenFolder(const std::string& folder) {
    if (IsExistingFolder(files_, folder)) Open(folder);
}

void LaunchCommands::OpenSelectedFolder() {
    const auto row = main_.SelectedMod();
    if (row && ModExists(files_, LibraryFolder(main_.ProgramDirectory), row->path))
        Open(Join(LibraryFolder(main_.ProgramDirectory), row->path.text));
}

void LaunchCommands::OpenSelectedReadme() {
    const auto row = main_.SelectedMod();
    if (!row || row->path.Empty()) return;
    const std::string folder = Join(LibraryFolder(main_.ProgramDirectory), row->path.text);
    const auto entries = files_.List(folder, Detail::Names);
    const DirEntry* readme = entries ? FindReadme(*entries) : nullptr;
    if (readme) Open(Join(folder, readme->name));
}

void LaunchCommands::Open(std::string_view target) {
    // The desktop reports a failure by itself.
    Ignore(main_.GetServices().shell.OpenWithShell(target));
}

} // namespace quillbay
