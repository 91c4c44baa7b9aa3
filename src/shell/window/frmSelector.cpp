#include "shell/window/frmSelector.h"

#include "common/Twips.h"
#include "common/window/OutcomeText.h"
#include "common/window/PaintClock.h"
#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "effects/window/WindowEffects.h"
#include "library/GameDirectory.h"
#include "library/KnownFolders.h"
#include "library/ModExchange.h"
#include "library/window/IntakeCommands.h"
#include "modinfo/window/ModPicture.h"
#include "platform/window/LayeredWindow.h"
#include "shell/window/MenuWindows.h"
#include "shell/window/frmChangeT2Dir.h"
#include "ui_frmSelector.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontInfo>

#include <algorithm>

namespace quillbay {

namespace {

constexpr int kHeightWithoutPicture = TwipsToPixels(6150);
constexpr int kWidth = TwipsToPixels(7095);
constexpr int kListWidth = TwipsToPixels(2790);

constexpr int kFirstDetailsAfterMs = 1000;

constexpr double kOutcomeFontSize = 0.85;   ///< of the window's: fits below the list
constexpr qsizetype kLongestOutcome = 8000; ///< characters of its tool tip

QTimer* MakeTimer(QObject* parent, const char* name, int interval) {
    auto* timer = new QTimer(parent);
    timer->setObjectName(QLatin1String(name));
    timer->setInterval(interval);
    return timer;
}

} // namespace

frmSelector::frmSelector(const Services& services)
    : LibraryHost(services), ui_(std::make_unique<Ui::frmSelector>()), details_(*ui_),
      timRefreshModList_(MakeTimer(this, "timRefreshModList", kRefreshEveryMs)),
      timClickMod_(MakeTimer(this, "timClickMod", kFirstDetailsAfterMs)) {
    ui_->setupUi(this);
    NameSeparators();
    chooser_ = std::make_unique<frmChangeT2Dir>(*this, ui_->modChangeT2Directory, services_, GameDirectory);
    windows_ = std::make_unique<MenuWindows>(*this, *ui_);
    intake_ = std::make_unique<IntakeCommands>(
        *this, IntakeControls{*ui_->menuModAddFromFile, *ui_->lblOutcome, *ui_->pgbPercent});
    connect(chooser_.get(), &frmChangeT2Dir::QuitRequested, this, &frmSelector::EndProgram);
    ConnectControls();
    ConnectMenus();
    FitToFont();
}

frmSelector::~frmSelector() = default;

void frmSelector::ConnectControls() {
    connect(ui_->cmdInstallMod, &QPushButton::clicked, this, &frmSelector::InstallMod);
    connect(ui_->cmdUninstallMod, &QPushButton::clicked, this, &frmSelector::UninstallMod);
    connect(ui_->cmdRefresh, &QPushButton::clicked, this, &frmSelector::menuModRefreshModList_Click);
    connect(ui_->lstMods, &QListWidget::itemSelectionChanged, this, &frmSelector::lstMods_Click);
    connect(ui_->lstMods, &ModListView::InstallRequested, this, &frmSelector::InstallMod);
    connect(ui_->lstMods, &ModListView::UninstallRequested, this, &frmSelector::UninstallMod);
    connect(ui_->lstMods, &ModListView::MenuRequested, this, &frmSelector::lstMods_MouseDown);
    connect(timRefreshModList_, &QTimer::timeout, this, &frmSelector::timRefreshModList_Timer);
    connect(timClickMod_, &QTimer::timeout, this, &frmSelector::timClickMod_Timer);
}

bool frmSelector::Start() {
    timRefreshModList_->start();
    timClickMod_->start();
    details_.ShowBeforeStart();
    SetWindowAlpha(*this, 1);
    show();
    if (isMaximized()) {
        showNormal();
    }
    repaint();
    registeredGame_ = ReadGameDirectory(services_.registry);
    GameDirectory = registeredGame_.path;
    RecoverMods(services_.files, ModsFolder(ProgramDirectory));
    RefreshModList({.hideProgress = true, .keepControls = true, .skipCount = true, .keepDetails = true});
    ReadSettings();
    FadeIn(*this, *this, FadeIntensity);
    if (Phase == ProgramPhase::Ended) {
        return false;
    }
    CountGameFilesAtStart();
    if (Phase == ProgramPhase::Ended) {
        return false;
    }
    setWindowTitle(QLatin1String(kProgramTitle));
    TellTakenPrefix();
    if (!IsExistingFolder(services_.files, GameDirectory)) {
        AskForGameDirectory();
    }
    return Phase != ProgramPhase::Ended;
}

void frmSelector::TellTakenPrefix() {
    if (!registeredGame_.otherPrefixes) return;
    ShowOutcome(OutcomeText(QStringLiteral("The game is taken from one of several Wine prefixes: ") +
                            ToQString(registeredGame_.prefix))
                    .Note(QStringLiteral("Its registry was changed last. The game directory: ") +
                          ToQString(GameDirectory)));
}

void frmSelector::CountGameFilesAtStart() {
    std::size_t total = 0;
    PaintClock clock;
    const auto showCount = [&](std::size_t, std::size_t soFar) {
        ui_->lblT2NumOfFiles->setText(QString::number(soFar));
        if (clock.Due()) {
            ui_->lblT2NumOfFiles->repaint();
            QCoreApplication::processEvents();
        }
        return Phase != ProgramPhase::Ended;
    };
    if (IsExistingFolder(services_.files, GameDirectory)) {
        total = CountKnownFiles(services_.files, GameDirectory, showCount);
    }
    if (Phase != ProgramPhase::Ended) {
        ui_->lblT2NumOfFiles->setText(QString::number(total));
        QCoreApplication::processEvents();
    }
}

void frmSelector::AskForGameDirectory() {
    ui_->lblT2NumOfFiles->setText(QLatin1String(kNoFolderCount));
    GameDirectory = kGameNotFound;
    ShowMessage(this, QStringLiteral("Pause"));
    if (Phase != ProgramPhase::Ended) {
        chooser_->OpenModal();
    }
}

void frmSelector::FitToFont() {
    const int rowHeight = ui_->lstMods->RowHeight();
    const auto scaled = [&](int pixels) { return pixels * rowHeight / ModListView::kStandardRowHeight; };
    const auto lineOf = [](const QWidget& widget) { return widget.fontMetrics().height(); };
    ui_->modColumn->setFixedSize(scaled(kListWidth), ui_->lstMods->FullHeight());
    for (QLabel* label : {ui_->lblModsMaker, ui_->lblModsVersion, ui_->lblModsOtherHeading}) {
        label->setFixedHeight(lineOf(*label));
    }
    for (QScrollArea* area : {ui_->areaDescription, ui_->areaOther}) {
        area->setMinimumHeight(2 * lineOf(*area));
    }
    QFont quiet = font();
    quiet.setPointSizeF(QFontInfo(quiet).pointSizeF() * kOutcomeFontSize); // also of a font in pixels
    ui_->lblOutcome->setFont(quiet);
    const bool withPicture = !ui_->pictureFrame->isHidden();
    const int pictureHeight = withPicture ? kPictureHeight : 0;
    ui_->centralWidget->layout()->invalidate();
    const int needed = menuBar()->sizeHint().height() + ui_->centralWidget->minimumSizeHint().height();
    const int extra = ui_->lstMods->FullHeight() - ModListView::kShownRows * ModListView::kStandardRowHeight -
                      2 * ui_->lstMods->frameWidth();
    baseHeight_ = std::max(kHeightWithoutPicture + extra, needed - pictureHeight);
    setFixedSize(scaled(kWidth), baseHeight_ + pictureHeight);
}

void frmSelector::ShowPictureLayout(bool withPicture) {
    const bool switches = withPicture == ui_->pictureFrame->isHidden();
    // The list keeps its place on the screen, unless the title bar would leave it.
    const int shift = !switches ? 0 : withPicture ? -kPictureHeight : kPictureHeight;
    const int screenTop = screen()->geometry().top();
    const int top = withPicture ? std::max(screenTop, y() + shift) : y() + shift;
    if (switches) {
        ui_->pictureFrame->setVisible(withPicture);
        setFixedHeight(baseHeight_ + (withPicture ? kPictureHeight : 0));
    }
    if (top != y()) move(x(), top);
    layout()->activate();
    ui_->centralWidget->layout()->activate();
}

void frmSelector::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        // The children take the new font after their window.
        QMetaObject::invokeMethod(this, &frmSelector::FitToFont, Qt::QueuedConnection);
    }
}

const std::vector<ModRow>& frmSelector::ModRows() const { return ui_->lstMods->Rows(); }

std::optional<ModRow> frmSelector::SelectedMod() const { return ui_->lstMods->SelectedRow(); }

bool frmSelector::SelectMod(const ModPath& path) { return ui_->lstMods->SelectPath(path); }

void frmSelector::ShowOutcome(const OutcomeText& outcome) {
    ui_->lblOutcome->setText(outcome.Sentence());
    ui_->lblOutcome->setToolTip(PlainToolTip(outcome.ToolTip(), kLongestOutcome));
}

bool frmSelector::AutoRefresh() const { return timRefreshModList_->isActive(); }

void frmSelector::SetAutoRefresh(bool on) {
    if (!on) {
        timRefreshModList_->stop();
    } else if (Phase == ProgramPhase::Running) {
        timRefreshModList_->start();
    }
}

ClosingSwitches frmSelector::SmoothClosing() const {
    return {.xAxis = ui_->menuManagerSmoothClosingXAxis->isChecked(),
            .yAxis = ui_->menuManagerSmoothClosingYAxis->isChecked(),
            .simultaneous = ui_->menuManagerSmoothClosingSimultaneous->isChecked()};
}

bool frmSelector::SmoothCloseMainWindowOnly() const {
    return ui_->menuManagerSmoothClosingMainWindowOnly->isChecked();
}

void frmSelector::closeEvent(QCloseEvent* event) {
    if (Phase == ProgramPhase::Ended) {
        event->accept();
        return;
    }
    // The effects end with the end of the program, which hides the window.
    event->ignore();
    if (Phase == ProgramPhase::Running && !windows_->MayEnd()) return;
    CloseProgramWithEffects(*this, *timRefreshModList_, [this] { EndProgram(); });
}

void frmSelector::EndProgram() {
    Phase = ProgramPhase::Ended;
    timRefreshModList_->stop();
    timClickMod_->stop();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        window->hide();
    QCoreApplication::exit(0);
}

} // namespace quillbay
