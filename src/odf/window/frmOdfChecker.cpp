#include "odf/window/frmOdfChecker.h"

#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/GameDirectory.h"
#include "library/window/LibraryHost.h"
#include "odf/OdfCheckerHelp.h"
#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "odf/RaceList.h"
#include "platform/PathText.h"
#include "ui_frmOdfChecker.h"

#include <QCloseEvent>
#include <QPointer>
#include <QSignalBlocker>

#include <array>
#include <utility>

namespace quillbay {

namespace {

/// The boxes of kOdfChecks, in its order.
constexpr auto kCheckBoxes = std::to_array<QCheckBox * Ui::frmOdfChecker::*>({
    &Ui::frmOdfChecker::chkQuotes,
    &Ui::frmOdfChecker::chkInclude,
    &Ui::frmOdfChecker::chkRace,
    &Ui::frmOdfChecker::chkWeaponOdfs,
    &Ui::frmOdfChecker::chkTooltips,
    &Ui::frmOdfChecker::chkBuilditems,
    &Ui::frmOdfChecker::chkVTooltips,
});
static_assert(kCheckBoxes.size() == kOdfChecks.size(), "one box for each check");

QString FileName(const OdfError& error) { return ToQString(LastComponent(error.path)); }

} // namespace

frmOdfChecker::frmOdfChecker(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmOdfChecker>()) {
    ui_->setupUi(this);
    ui_->dirDirectory->SetFileSystem(main.GetServices().files);
    for (const HelpTopic& topic : kOdfCheckerHelp)
        ui_->cboHelp->addItem(QLatin1String(topic.entry));
    ui_->cboHelp->setCurrentIndex(-1);
    ui_->lblHelp->setText(QLatin1String(kHelpPrompt));
    ConnectControls();
}

frmOdfChecker::~frmOdfChecker() = default;

void frmOdfChecker::ConnectControls() {
    connect(ui_->dirDirectory, &FolderListBox::pathChanged, this, &frmOdfChecker::dirDirectory_Change);
    connect(ui_->cmdStart, &QPushButton::clicked, this, &frmOdfChecker::cmdStart_Click);
    connect(ui_->cmdPause, &QPushButton::clicked, this, &frmOdfChecker::cmdPause_Click);
    connect(ui_->cmdContinue, &QPushButton::clicked, this, &frmOdfChecker::cmdContinue_Click);
    connect(ui_->cmdIgnore, &QPushButton::clicked, this, &frmOdfChecker::cmdIgnore_Click);
    connect(ui_->cboHelp, &QComboBox::currentIndexChanged, this, &frmOdfChecker::cboHelp_Click);
    for (QCheckBox* option : {ui_->chkOnlyModNew, ui_->chkWeaponHardpoints})
        connect(option, &QCheckBox::toggled, this, [this, option] { UnavailableOption_Click(*option); });
}

void frmOdfChecker::Form_Load() {
    ShowState(State::Idle);
    ShowGameFolder();
}

void frmOdfChecker::Form_OpenedAgain() {
    if (state_ == State::Idle) ShowGameFolder();
}

void frmOdfChecker::ShowGameFolder() {
    const auto& services = main_.GetServices();
    const std::string odfFolder = Join(main_.GameDirectory, "odf");
    const QSignalBlocker blocker(ui_->dirDirectory);
    ui_->dirDirectory->setPath(
        ToQString(IsExistingFolder(services.files, odfFolder) ? odfFolder : main_.ProgramDirectory));
    LookAtFolder();
}

void frmOdfChecker::LookAtFolder() {
    const QString& folder = ui_->dirDirectory->path();
    ui_->cmdStart->setEnabled(folder.endsWith(QLatin1String("odf"), Qt::CaseInsensitive));
    const bool hasRaces = ProbeRaceFiles(main_.GetServices().files, FromQString(folder));
    ui_->chkRace->setChecked(hasRaces);
    ui_->chkRace->setEnabled(hasRaces);
}

void frmOdfChecker::dirDirectory_Change() {
    if (state_ == State::Idle) {
        LookAtFolder();
        return;
    }
    // The list is locked, but a click on it may have been waiting.
    const QSignalBlocker blocker(ui_->dirDirectory);
    ui_->dirDirectory->setPath(ToQString(run_->OdfFolder()));
}

void frmOdfChecker::cmdStart_Click() {
    if (IsClosing()) return;
    ShowRunning();
    run_.emplace(main_.GetServices().files, FromQString(ui_->dirDirectory->path()));
    Run();
}

void frmOdfChecker::cmdContinue_Click() {
    if (!run_ || !SaveText()) return;
    ShowRunning();
    run_->CheckAgain();
    Run();
}

void frmOdfChecker::cmdIgnore_Click() {
    if (!run_ || !SaveText()) return;
    ShowRunning();
    run_->SkipFile();
    Run();
}

void frmOdfChecker::Run() {
    const QPointer<frmOdfChecker> self = this;
    for (;;) {
        const auto step = run_->Next(Options());
        if (step == OdfCheckRun::Step::End) return EndRun();
        if (step == OdfCheckRun::Step::Error) return StopAtError();
        if (paintClock_.Due()) ShowProgress();
        QCoreApplication::processEvents();
        if (!self || EndIfRequested()) return;
        if (pauseRequested_) return ShowState(State::Paused);
    }
}

OdfCheckOptions frmOdfChecker::Options() const {
    OdfCheckOptions options;
    for (std::size_t i = 0; i < kCheckBoxes.size(); ++i)
        options.checks[i] = ((*ui_).*kCheckBoxes[i])->isChecked();
    options.removeUnusedLines = ui_->chkRemoveUnusedLines->isChecked();
    return options;
}

bool frmOdfChecker::EndIfRequested() {
    if (Host().Phase == ProgramPhase::Running && !closeRequested_) return false;
    EndRun();
    if (std::exchange(closeRequested_, false)) close();
    return true;
}

void frmOdfChecker::EndRun() {
    TellRun();
    run_.reset();
    ShowState(State::Idle);
    ui_->cmdStart->setFocus();
}

void frmOdfChecker::TellRun() {
    if (!run_ || (run_->Rewritten() == 0 && run_->PassedOver().empty())) return;
    main_.ShowOutcome(OutcomeText(QStringLiteral("The check of the odf files is over"))
                          .Count(run_->Rewritten(), QStringLiteral("rid of unused lines"))
                          .Files(run_->PassedOver(), QStringLiteral("could not be read or written")));
}

void frmOdfChecker::StopAtError() {
    const OdfError& error = *run_->Error();
    ShowProgress();
    if (ui_->chkMsgBoxes->isChecked()) {
        const QPointer<frmOdfChecker> self = this;
        ShowMessage(this, ToQString(error.check->text), ToQString(error.check->title), QMessageBox::Warning);
        if (!self || EndIfRequested()) return;
    }
    ShowOdfError(error);
}

void frmOdfChecker::ShowOdfError(const OdfError& error) {
    ShowState(State::Stopped);
    const bool isShown = ShowOdf(error);
    if (isShown) shown_ = ShownOdf{ui_->txtOdf->RawText(), error.bytes};
    ui_->txtOdf->setReadOnly(!isShown);
    if (!isShown) {
        ui_->txtOdf->setPlainText(
            QStringLiteral("This file is larger than 4 MB, or holds bytes that this box "
                           "would change. The error is in line %1.\n"
                           "Repair it in another program and then click on Continue.")
                .arg(error.line + 1));
    }
    ui_->txtOdf->setFocus();
    ui_->lblErrorType->setText(QStringLiteral("Error type: ") + ToQString(error.check->errorType) +
                               QStringLiteral("\nFile name: ") + FileName(error));
}

bool frmOdfChecker::ShowOdf(const OdfError& error) {
    if (error.bytes.size() > kLargestShownOdf) return false;
    ui_->txtOdf->setPlainText(ToQString(OdfBytesToText(error.bytes)));
    if (!KeepsEveryByte(error.bytes, FromQString(ui_->txtOdf->RawText()))) return false;
    ui_->txtOdf->SelectFirst(ToQString(OdfLineToText(error.cutText)), error.line);
    return true;
}

bool frmOdfChecker::IsEdited() const { return shown_ && ui_->txtOdf->RawText() != shown_->text; }

bool frmOdfChecker::SaveText() {
    if (!IsEdited()) return true;
    const OdfError& error = *run_->Error();
    const QString text = ui_->txtOdf->RawText();
    EncodedText encoded = OdfTextToBytes(FromQString(text));
    if (encoded.unencodable) {
        ShowError(this, FileName(error) + QStringLiteral(" was not saved: the character '") +
                            ToQString(*encoded.unencodable) +
                            QStringLiteral("' cannot be written in an odf."));
        return false;
    }
    FileSystem& files = main_.GetServices().files;
    const QPointer<frmOdfChecker> self = this;
    // An uninstallation may have put the game's own file there meanwhile.
    if (ReadOdf(files, error.path) != shown_->bytes &&
        (!Confirmed(this,
                    FileName(error) + QStringLiteral(" has changed on the disk since it was shown here. "
                                                     "Replace it?"),
                    QStringLiteral("Replace odf?"), QMessageBox::Warning) ||
         !self))
        return false;
    if (const auto failure = ReplaceOdf(files, error.path, encoded.bytes)) {
        ShowError(this,
                  FileName(error) + QStringLiteral(" was not saved, and is as it was: ") + Reason(failure));
        return false;
    }
    shown_ = ShownOdf{text, std::move(encoded.bytes)};
    main_.ShowOutcome(OutcomeText(FileName(error) + QStringLiteral(" is saved")).Note(ToQString(error.path)));
    return true;
}

bool frmOdfChecker::Form_QueryUnload() {
    if (!IsEdited()) return true;
    BringToFront();
    const QPointer<frmOdfChecker> self = this;
    const auto answer = ShowMessage(this, FileName(*run_->Error()) + QStringLiteral(" was edited. Save it?"),
                                    QStringLiteral("Save odf?"), QMessageBox::Question,
                                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    if (!self) return false;
    return answer == QMessageBox::Save ? SaveText() : answer == QMessageBox::Discard;
}

void frmOdfChecker::closeEvent(QCloseEvent* event) {
    if (isVisible() && !IsClosing()) {
        closeRequested_ = state_ == State::Running;
        if (closeRequested_) return event->ignore();
    }
    const QPointer<frmOdfChecker> self = this;
    EffectWindow::closeEvent(event);
    if (self && IsClosing() && run_) EndRun();
}

void frmOdfChecker::cboHelp_Click(int topic) {
    const bool isTopic = topic >= 0;
    ui_->lblHelp->setText(
        QLatin1String(isTopic ? kOdfCheckerHelp[static_cast<std::size_t>(topic)].text : kHelpPrompt));
}

void frmOdfChecker::UnavailableOption_Click(QCheckBox& option) {
    if (!option.isChecked()) return;
    const QPointer<QCheckBox> stillThere = &option;
    ShowMessage(this, QStringLiteral("This will be available in the next version of Quillbay"));
    if (stillThere) stillThere->setChecked(false);
}

} // namespace quillbay
