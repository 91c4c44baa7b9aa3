#include "odf/window/frmOdfChecker.h"
#include "ui_frmOdfChecker.h"

namespace quillbay {

namespace {

constexpr char kPrompt[] = "Select an odf folder and then click\non the start button to begin the check";
constexpr char kWait[] = "Please wait while Quillbay checks the odfs\n"
                         "in the folder you have selected.\n"
                         "\n"
                         "You can pause the process, but don't rename,\n"
                         " move, or delete any files in the odf directory while\n"
                         "you are still checking the files.";

} // namespace

void frmOdfChecker::ShowState(State state) {
    state_ = state;
    pauseRequested_ = false;
    const bool idle = state == State::Idle;
    for (QWidget* control : std::initializer_list<QWidget*>{ui_->cboHelp, ui_->lblHelp, ui_->lblInfo1})
        control->setVisible(idle);
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui_->pgbProgress, ui_->cmdPause, ui_->cmdContinue, ui_->cmdIgnore,
                                         ui_->lblErrorType, ui_->lblStatus})
        control->setVisible(!idle);
    ui_->dirDirectory->setEnabled(idle);
    ui_->cmdStart->setEnabled(idle);
    ui_->cmdPause->setEnabled(state == State::Running);
    ui_->cmdContinue->setEnabled(state != State::Running);
    ui_->cmdIgnore->setEnabled(idle || state == State::Stopped);
    ui_->txtOdf->setEnabled(idle || state == State::Stopped);
    shown_.reset();
    if (idle) {
        ui_->txtOdf->setReadOnly(false);
        ui_->txtOdf->setPlainText(QLatin1String(kPrompt));
    }
    if (idle || state == State::Running) ui_->lblErrorType->clear();
    if (state == State::Paused) {
        ShowProgress();
        ui_->cmdContinue->setFocus();
    }
}

void frmOdfChecker::ShowRunning() {
    ShowState(State::Running);
    ui_->cmdPause->setFocus();
    ui_->txtOdf->setPlainText(QLatin1String(kWait));
    if (run_) return;
    ui_->lblStatus->clear();
    ui_->pgbProgress->setValue(0);
}

void frmOdfChecker::ShowProgress() {
    const std::size_t files = run_->ShownFiles();
    const std::size_t total = run_->TotalFiles();
    ui_->pgbProgress->setValue(total == 0 ? 0 : static_cast<int>(files * 100 / total));
    ui_->lblStatus->setText(QStringLiteral(" %1\n %2").arg(files).arg(total));
}

} // namespace quillbay
