#include "catalogue/window/RecompileCommand.h"

#include "catalogue/FileList.h"
#include "common/window/Hourglass.h"
#include "common/window/OutcomeText.h"
#include "common/window/ShowMessage.h"
#include "library/window/LibraryHost.h"

#include <QAction>

namespace quillbay {

namespace {

void ReportFailure(QWidget* window, const RecompileResult& result) {
    const auto withPath = [&](const QString& sentence) {
        return WithPath(sentence, result.concerned, result.error);
    };
    switch (result.outcome) {
    case RecompileOutcome::Done:
        return;
    case RecompileOutcome::NoGame:
        return ShowError(window, QStringLiteral("The Tempest II directory was not found, so the definition "
                                                "file was not changed. Choose it with Manager\\Change T2 "
                                                "Directory."));
    case RecompileOutcome::Unreadable:
        return ShowError(
            window,
            withPath(QStringLiteral("The definition file was not changed, because this could not be read.")));
    case RecompileOutcome::NotWritten:
        return ShowError(window, withPath(QStringLiteral("The definition file could not be written.")));
    }
}

OutcomeText Describe(const RecompileResult& result) {
    if (result.outcome != RecompileOutcome::Done)
        return OutcomeText(QStringLiteral("FileList.txt is as it was"))
            .Note(WithPath(QStringLiteral("The reason:"), result.concerned, result.error));
    return OutcomeText(QStringLiteral("FileList.txt is written anew"))
        .Count(result.files, QStringLiteral("recorded"));
}

} // namespace

void RecompileFromMenu(LibraryHost& main, QAction& openFinder) {
    if (!Confirmed(&main.MainWindow(),
                   QStringLiteral("This will recompile the definition file used in the Find Modified/New "
                                  "files window. More information in the readme. Do you wish to continue?"),
                   QStringLiteral("Recompile file list?")))
        return;
    RecompileResult result;
    {
        const Hourglass busy;
        result = RecompileFileList(main.GetServices().files, main.GameDirectory, main.ProgramDirectory);
    }
    main.ShowOutcome(Describe(result));
    if (result.outcome != RecompileOutcome::Done) return ReportFailure(&main.MainWindow(), result);
    openFinder.setEnabled(true);
    openFinder.setToolTip({});
    ShowMessage(&main.MainWindow(), QStringLiteral("Compilation complete."));
}

} // namespace quillbay
