#include "shell/frmSelector.h"

#include "common/QtText.h"
#include "common/ShowMessage.h"
#include "common/Twips.h"
#include "common/modMisc.h"
#include "effects/WindowEffects.h"
#include "library/KnownFolders.h"
#include "modinfo/ModPicture.h"
#include "platform/window/LayeredWindow.h"
#include "shell/AppSettings.h"
#include "shell/GameDirectory.h"
#include "shell/MenuWindows.h"
#include "shell/ShownProgress.h"
#include "shell/frmChangeT2Dir.h"
#include "ui_frmSelector.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr int kHeightWithoutPicture = TwipsToPixels(6150);
constexpr int kWidth = TwipsToPixels(7095);
constexpr int kListWidth = TwipsToPixels(2790);

constexpr int kFirstDetailsAfterMs = 1000;
constexpr qint64 kPaintEveryMs = 16;

constexpr char kNoFolderCount[] = "(T2 folder not found)";

QTimer* MakeTimer(QObject* parent, const char* name, int interval) {
    auto* timer = new QTimer(parent);
    timer->setObjectName(QLatin1String(name));
    timer->setInterval(interval);
    return timer;
}

/// A stored number as a byte; 0 when it is none or does not fit.
std::uint8_t ByteSetting(const AppSettings& settings, const char* key, const char* fallback) {
    const QString text =
        settings.GetAppSetting(QStringLiteral("Fade"), QLatin1String(key), QLatin1String(fallback));
    const double number = std::round(ParseLeadingNumber(FromQString(text)));
    return number >= 0 && number <= 255 ? static_cast<std::uint8_t>(number) : std::uint8_t{0};
}

} // namespace

frmSelector::frmSelector(const Services& services)
    : ProgramDirectory(services.programDirectory), services_(services),
      ui_(std::make_unique<Ui::frmSelector>()), details_(*ui_),
      timRefreshModList_(MakeTimer(this, "timRefreshModList", kRefreshEveryMs)),
      timClickMod_(MakeTimer(this, "timClickMod", kFirstDetailsAfterMs)) {
    ui_->setupUi(this);
    NameSeparators();
    chooser_ = std::make_unique<frmChangeT2Dir>(*this, ui_->modChangeT2Directory, services_, GameDirectory);
    windows_ = std::make_unique<MenuWindows>(*this, *ui_);
    connect(chooser_.get(), &frmChangeT2Dir::QuitRequested, this, &frmSelector::EndProgram);
    ConnectControls();
    ConnectMenus();
    FitToFont();
}

frmSelector::~frmSelector() = default;

void frmSelector::ConnectControls() {
    connect(ui_->cmdInstallMod, &QPushButton::clicked, this, &frmSelector::InstallMod);
    connect(ui_->cmdUninstallMod, &QPushButton::clicked, this, &frmSelector::UninstallMod);
    connect(ui_->cmdRefresh, &QPushButton::clicked, this, [this] { RefreshModList({}); });
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
    SetWindowAlpha(*this, 1);
    show();
    if (isMaximized()) {
        showNormal();
    }
    repaint();
    GameDirectory = ReadGameDirectory(services_.registry);
    details_.ShowBeforeStart();
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
    if (!IsExistingFolder(services_.files, GameDirectory)) {
        AskForGameDirectory();
    }
    return Phase != ProgramPhase::Ended;
}

void frmSelector::ReadSettings() {
    const AppSettings& settings = services_.settings;
    const auto isOn = [&](const char* key, const char* fallback) {
        return settings.GetAppSetting(QStringLiteral("Smooth Closing"), QLatin1String(key),
                                      QLatin1String(fallback)) == QLatin1String("True");
    };
    ui_->menuManagerSmoothClosingXAxis->setChecked(isOn("XAxis", "True"));
    ui_->menuManagerSmoothClosingYAxis->setChecked(isOn("YAxis", "True"));
    ui_->menuManagerSmoothClosingSimultaneous->setChecked(isOn("Simultaneous", "False"));
    ui_->menuManagerSmoothClosingMainWindowOnly->setChecked(isOn("Main Window Only", "True"));
    FadeIntensity = ByteSetting(settings, "Intensity", "237");
    FadeSpeed = ByteSetting(settings, "Speed", "1");
}

void frmSelector::CountGameFilesAtStart() {
    std::size_t total = 0;
    QElapsedTimer sincePaint;
    sincePaint.start();
    const auto showCount = [&](std::size_t, std::size_t soFar) {
        if (Phase == ProgramPhase::Ended) {
            return;
        }
        ui_->lblT2NumOfFiles->setText(QString::number(soFar));
        if (sincePaint.elapsed() >= kPaintEveryMs) {
            ui_->lblT2NumOfFiles->repaint();
            QCoreApplication::processEvents();
            sincePaint.restart();
        }
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

void frmSelector::CountGameFiles(const RefreshOptions& options) {
    if (options.hideProgress && options.keepControls) {
        return; // nobody would see it
    }
    const auto setCaption = [&](const QString& text) {
        if (!options.keepControls) {
            ui_->lblT2NumOfFiles->setText(text);
        }
    };
    if (!IsExistingFolder(services_.files, GameDirectory)) {
        setCaption(QLatin1String(kNoFolderCount));
        return;
    }
    std::optional<ShownProgress> progress;
    if (!options.hideProgress) {
        progress.emplace(*ui_->pgbPercent);
    }
    setCaption(QString::number(
        CountKnownFiles(services_.files, GameDirectory, [&](std::size_t position, std::size_t) {
            if (progress) {
                progress->Set(position + 1, kGameFolderCount);
            }
        })));
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
    if (withPicture != ui_->pictureFrame->isHidden()) {
        return;
    }
    ui_->pictureFrame->setVisible(withPicture);
    const int shift = withPicture ? -kPictureHeight : kPictureHeight;
    // The list keeps its place on the screen, unless the title bar would leave it.
    const int screenTop = screen()->geometry().top();
    const int top = withPicture ? std::max(screenTop, y() + shift) : y() + shift;
    setFixedHeight(baseHeight_ + (withPicture ? kPictureHeight : 0));
    move(x(), top);
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
