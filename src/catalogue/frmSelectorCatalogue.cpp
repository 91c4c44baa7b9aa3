#include "catalogue/FileListWriter.h"
#include "common/QtText.h"
#include "common/ShowMessage.h"
#include "shell/frmSelector.h"
#include "ui_frmSelector.h"

#include <QApplication>

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

} // namespace

void frmSelector::menuManagerModFilesRecompile_Click() {
    const auto answer = ShowMessage(
        this,
        QStringLiteral("This will recompile the definition file used in the Find Modified/New "
                       "files window. More information in the readme. Do you wish to continue?"),
        QStringLiteral("Recompile file list?"), QMessageBox::Question, QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const RecompileResult result = RecompileFileList(services_.files, GameDirectory, ProgramDirectory);
    QApplication::restoreOverrideCursor();
    if (result.outcome != RecompileOutcome::Done) return ReportFailure(this, result);
    ui_->menuManagerFindModifiedFiles->setEnabled(true);
    ShowMessage(this, QStringLiteral("Compilation complete."));
}

} // namespace quillbay
