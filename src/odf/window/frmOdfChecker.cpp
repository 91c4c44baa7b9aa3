#include "odf/window/frmOdfChecker.h"

#include "common/window/OutcomeText.h"
#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/GameDirectory.h"
#include "library/window/LibraryHost.h"
#include "odf/OdfCheckerHelp.h"
#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "odf/RaceList.h"
#include "odf/window/OdfCheckReport.h"
#include "platform/PathText.h"
#include "ui_frmOdfChecker.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QFontInfo>
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

constexpr char kPrompt[] = "Select an odf folder and then click\non the start button to begin the check";
constexpr char kWait[] = "Please wait while Quillbay checks the odfs\n"
                         "in the folder you have selected.\n"
                         "\n"
                         "You can pause the process, but don't rename,\n"
                         " move, or delete any files in the odf directory while\n"
                         "you are still checking the files.";

QString FileName(const OdfError& error) { return ToQString(LastComponent(error.path)); }

constexpr qsizetype kLongestToolTip = 8000; // characters: 2 times 15 paths, as a rule

/// The fixed-width font in the size of another one.
QFont FixedFont(const QFont& size) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QFontInfo(size).pointSizeF());
    return font;
}

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
    ui_->lblCheckerOutcome->hide();
    ShowGameFolder();
}

void frmOdfChecker::Form_OpenedAgain() {
    closeRequested_ = false;
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
        if (step == OdfCheckRun::Step::End) return EndRun(true);
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
    EndRun(false);
    if (std::exchange(closeRequested_, false)) close();
    return true;
}

void frmOdfChecker::EndRun(bool isWhole) {
    const OutcomeText outcome = Describe(*run_, isWhole);
    run_.reset();
    ShowState(State::Idle);
    ui_->cmdStart->setFocus();
    main_.ShowOutcome(outcome);
    ui_->lblCheckerOutcome->setText(outcome.Sentence());
    ui_->lblCheckerOutcome->setToolTip(PlainToolTip(outcome.ToolTip(), kLongestToolTip));
    ui_->lblCheckerOutcome->show();
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
    if (isShown) shown_ = ShownOdf{ui_->txtOdf->Text(), error.bytes};
    ui_->txtOdf->setReadOnly(!isShown);
    if (!isShown) {
        ShowNote(
            QStringLiteral("This file is larger than 4 MB, has a line of more than 256 KB, or holds bytes "
                           "that this box would change. The error is in line %1.\n"
                           "Repair it in another program and then click on Continue.")
                .arg(error.line + 1));
    }
    ui_->txtOdf->setFocus();
    ui_->lblErrorType->setText(QStringLiteral("Error type: ") + ToQString(error.check->errorType) +
                               QStringLiteral("\nFile name: ") + FileName(error));
    ui_->lblErrorType->setToolTip(PlainToolTip(ShownPlace({error.path, error.line})));
}

bool frmOdfChecker::ShowOdf(const OdfError& error) {
    if (IsTooLargeToShow(error.bytes)) return false;
    ui_->txtOdf->clear(); // the old text need not be laid out in the other font
    ui_->txtOdf->setFont(FixedFont(font()));
    ui_->txtOdf->SetText(DecodeSystemText(error.bytes));
    // Some code pages decode two byte sequences to one character; only one of them comes back.
    if (ui_->txtOdf->FileBytes().bytes != WithLineEnds(error.bytes)) return false;
    ui_->txtOdf->SelectFirst(error.cutText, error.line);
    return true;
}

bool frmOdfChecker::IsEdited() const { return shown_ && ui_->txtOdf->Text() != shown_->text; }

bool frmOdfChecker::SaveText() {
    if (!IsEdited()) return true;
    const OdfError& error = *run_->Error();
    EncodedText encoded = ui_->txtOdf->FileBytes();
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
    shown_ = ShownOdf{ui_->txtOdf->Text(), std::move(encoded.bytes)};
    main_.ShowOutcome(OutcomeText(FileName(error) + QStringLiteral(" is saved")).Note(ShownPath(error.path)));
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
    if (self && IsClosing() && run_) EndRun(false);
}

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
        ShowNote(QLatin1String(kPrompt));
    }
    if (idle || state == State::Running) ui_->lblErrorType->clear();
    if (state != State::Stopped) ui_->lblErrorType->setToolTip({});
    if (state == State::Paused) {
        ShowProgress();
        ui_->cmdContinue->setFocus();
    }
}

void frmOdfChecker::ShowRunning() {
    ShowState(State::Running);
    ui_->cmdPause->setFocus();
    ui_->lblCheckerOutcome->hide();
    ShowNote(QLatin1String(kWait));
    if (run_) return;
    ui_->lblStatus->clear();
    ui_->pgbProgress->setValue(0);
}

void frmOdfChecker::ShowNote(const QString& text) {
    ui_->txtOdf->clear();
    ui_->txtOdf->setFont({});
    ui_->txtOdf->setPlainText(text);
}

void frmOdfChecker::ShowProgress() {
    const std::size_t files = run_->ShownFiles();
    const std::size_t total = run_->TotalFiles();
    ui_->pgbProgress->setValue(total == 0 ? 0 : static_cast<int>(files * 100 / total));
    ui_->lblStatus->setText(QStringLiteral(" %1\n %2").arg(files).arg(total));
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
