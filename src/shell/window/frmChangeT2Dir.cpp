#include "shell/window/frmChangeT2Dir.h"

#include "common/window/Hourglass.h"
#include "common/window/QtText.h"
#include "effects/window/EffectHost.h"
#include "library/window/Services.h"
#include "platform/DosPath.h"
#include "platform/PathText.h"
#include "ui_frmChangeT2Dir.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWindow>

namespace quillbay {

namespace {

constexpr int kLongestWaitForWindow = 500; // milliseconds

} // namespace

frmChangeT2Dir::frmChangeT2Dir(EffectHost& host, QAction* menuItem, const Services& services,
                               std::string& gameDirectory)
    : EffectWindow(host, menuItem), services_(services), gameDirectory_(gameDirectory),
      ui_(std::make_unique<Ui::frmChangeT2Dir>()) {
    ui_->setupUi(this);
    ui_->dirListBox->SetFileSystem(services.files);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmChangeT2Dir::cmdOK_Click);
    connect(ui_->cmdApply, &QPushButton::clicked, this, &frmChangeT2Dir::cmdApply_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmChangeT2Dir::cmdCancel_Click);
    connect(ui_->dirListBox, &FolderListBox::pathChanged, this, &frmChangeT2Dir::dirListBox_Change);
    connect(ui_->txtDir, &QLineEdit::textChanged, this, &frmChangeT2Dir::txtDir_Change);
    connect(ui_->txtDir, &QLineEdit::returnPressed, ui_->cmdOK, &QPushButton::click);
}

frmChangeT2Dir::~frmChangeT2Dir() = default;

void frmChangeT2Dir::OpenModal() {
    const QPointer<frmChangeT2Dir> self = this;
    QEventLoop untilClosed;
    connect(this, &EffectWindow::Closed, &untilClosed, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &untilClosed, &QEventLoop::quit);
    hide(); // a window that is shown keeps its modality
    openModal_ = true;
    Open();
    if (self && isVisible() && Host().Phase != ProgramPhase::Ended) untilClosed.exec();
    if (self) openModal_ = false;
}

void frmChangeT2Dir::Form_Load() {
    setWindowModality(openModal_ ? Qt::ApplicationModal : Qt::NonModal);
    ui_->lblChangeT2Info->setText(ToQString(ChooserInfo(services_.programDirectory)));
    ui_->lblCurrent->setText(ToQString(gameDirectory_));
    ui_->txtDir->setText(QStringLiteral("Attempting to find directory. Please wait..."));
    ui_->cmdApply->setEnabled(false);
    if (!KnowsNoGame() || !ui_->dirListBox->path().isEmpty()) return;
    const QSignalBlocker quiet(ui_->dirListBox); // nothing is chosen yet
    ui_->dirListBox->setPath(ToQString(FirstFolder(services_.programDirectory)));
}

void frmChangeT2Dir::Form_Shown() {
    if (KnowsNoGame())
        SearchGame();
    else if (IsExistingFolder(services_.files, gameDirectory_))
        ShowFolder(gameDirectory_);
    else
        ShowFolder(services_.programDirectory);
}

void frmChangeT2Dir::SearchGame() {
    if (!WaitUntilVisible()) return;
    std::string found;
    {
        const Hourglass hourglass;
        for (const auto& root : SearchRoots(services_.programDirectory)) {
            found = FindFileInTree(root, kGameExecutable);
            if (!found.empty()) break;
        }
    }
    if (!found.empty()) {
        ShowFolder(std::string(Parent(found)));
        return;
    }
    ui_->txtDir->setText(
        QStringLiteral("Unable to find directory. Please locate manually/install Tempest II."));
    if (isModal()) return;
    hide();
    setWindowModality(Qt::ApplicationModal);
    show();
}

void frmChangeT2Dir::ShowFolder(const std::string& folder) {
    ui_->dirListBox->setPath(ToQString(folder));
    dirListBox_Change(); // the list reports no change when it stands on that folder already
}

/// The search blocks the window, so what it says first must be on the screen. False when the user closed it.
bool frmChangeT2Dir::WaitUntilVisible() {
    const QPointer<frmChangeT2Dir> self = this;
    const QDeadlineTimer deadline(kLongestWaitForWindow);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (!self || !isVisible() || Host().Phase == ProgramPhase::Ended) return false;
    } while (!windowHandle()->isExposed() && !deadline.hasExpired());
    repaint();
    return true;
}

CandidateState frmChangeT2Dir::StoreCandidate() {
    const Candidate candidate =
        CheckCandidate(services_.files, FromQString(ui_->txtDir->text()), gameDirectory_);
    if (const QString path = ToQString(candidate.path); path != ui_->txtDir->text())
        ui_->txtDir->setText(path);
    if (candidate.state == CandidateState::NoName) QApplication::beep();
    if (candidate.state == CandidateState::Accepted) {
        gameDirectory_ = candidate.path;
        ui_->lblCurrent->setText(ToQString(gameDirectory_));
    }
    return candidate.state;
}

void frmChangeT2Dir::cmdOK_Click() {
    if (StoreCandidate() != CandidateState::NoName) close();
}

void frmChangeT2Dir::cmdApply_Click() {
    const CandidateState state = StoreCandidate();
    if (state == CandidateState::NoName) return;
    ui_->dirListBox->setPath(ToQString(gameDirectory_));
    if (state == CandidateState::Accepted) ui_->cmdApply->setEnabled(false);
}

void frmChangeT2Dir::cmdCancel_Click() {
    if (KnowsNoGame())
        emit QuitRequested();
    else
        close();
}

void frmChangeT2Dir::dirListBox_Change() { ui_->txtDir->setText(ui_->dirListBox->path()); }

void frmChangeT2Dir::txtDir_Change() { ui_->cmdApply->setEnabled(true); }

void frmChangeT2Dir::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !event->isAutoRepeat())
        ui_->cmdCancel->click();
    else
        EffectWindow::keyPressEvent(event);
}

} // namespace quillbay
