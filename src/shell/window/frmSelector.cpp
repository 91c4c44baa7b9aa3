#include "shell/window/frmSelector.h"

#include "catalogue/window/RecompileCommand.h"
#include "common/Twips.h"
#include "common/window/AppSettings.h"
#include "common/window/EnterKey.h"
#include "common/window/OutcomeText.h"
#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "effects/window/WindowEffects.h"
#include "library/GameDirectory.h"
#include "library/ModExchange.h"
#include "library/window/HousekeepingCommands.h"
#include "library/window/InstallCommands.h"
#include "library/window/IntakeCommands.h"
#include "library/window/ModListRefresher.h"
#include "modinfo/window/DetailsPanel.h"
#include "platform/PathText.h"
#include "platform/window/LayeredWindow.h"
#include "shell/window/LaunchCommands.h"
#include "shell/window/MainMenus.h"
#include "shell/window/MenuWindows.h"
#include "shell/window/frmChangeT2Dir.h"
#include "ui_frmSelector.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontInfo>
#include <QMenu>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <utility>

namespace quillbay {

namespace {

constexpr int kHeightWithoutPicture = TwipsToPixels(6150);
constexpr int kWidth = TwipsToPixels(7095);
constexpr int kListWidth = TwipsToPixels(2790);

constexpr int kFirstDetailsAfterMs = 1000;
constexpr int kRefreshEveryMs = 1000;
constexpr int kRefreshMinimizedEveryMs = 10'000;

constexpr double kOutcomeFontSize = 0.85;   ///< of the window's: fits below the list
constexpr int kShownPrefixFolders = 3;      ///< `compatdata/123/pfx`
constexpr qsizetype kLongestOutcome = 8000; ///< characters of its tool tip

QTimer* MakeTimer(QObject* parent, const char* name, int interval) {
    auto* timer = new QTimer(parent);
    timer->setObjectName(QLatin1String(name));
    timer->setInterval(interval);
    return timer;
}

/// A stored number; 0 when it does not fit.
std::uint8_t ReadByte(const AppSettings& settings, const Preference& preference) {
    const double number = ReadNumber(settings, preference);
    return number >= 0 && number <= 255 ? static_cast<std::uint8_t>(number) : std::uint8_t{0};
}

} // namespace

struct frmSelector::Parts {
    Parts(frmSelector& main, Ui::frmSelector& ui)
        : menus(main, ui), details(main.services_.files,
                                   {.author = *ui.lblModsMaker,
                                    .description = *ui.lblModsDescription,
                                    .version = *ui.lblModsVersion,
                                    .otherHeading = *ui.lblModsOtherHeading,
                                    .other = *ui.lblModsOther,
                                    .fileCount = *ui.lblModNumOfFiles,
                                    .size = *ui.lblModSize,
                                    .picture = *ui.picModsPic,
                                    .invalidPicture = *ui.lblInvalidPic,
                                    .readmeItem = *ui.menuModCurrentModViewReadme},
                                   [&main](bool withPicture) { main.ShowPictureLayout(withPicture); }),
          modList(main, {.mods = *ui.lstMods,
                         .sortItems = *ui.lstSortItems,
                         .gameFiles = *ui.lblT2NumOfFiles,
                         .refresh = *ui.cmdRefresh,
                         .refreshItem = *ui.menuModRefreshModList,
                         .install = *ui.cmdInstallMod,
                         .installItem = *ui.menuModInstall,
                         .uninstall = *ui.cmdUninstallMod,
                         .uninstallItem = *ui.menuModUninstall,
                         .progress = *ui.pgbPercent}),
          installing(main, {.install = *ui.cmdInstallMod,
                            .installItem = *ui.menuModInstall,
                            .uninstall = *ui.cmdUninstallMod,
                            .uninstallItem = *ui.menuModUninstall,
                            .progress = *ui.pgbPercent}),
          housekeeping(main, {.mods = *ui.lstMods,
                              .removeItem = *ui.menuModCurrentModRemoveMod,
                              .newFolderItem = *ui.menuModMakeNewFolder,
                              .makeSubfoldersItem = *ui.menuModCurrentModSubfolders,
                              .removeSubfoldersItem = *ui.menuModCurrentModRemoveSubfolders,
                              .progress = *ui.pgbPercent}),
          intake(main,
                 {.addItem = *ui.menuModAddFromFile, .outcome = *ui.lblOutcome, .progress = *ui.pgbPercent}),
          launching(main), chooser(main, ui.modChangeT2Directory, main.services_, main.GameDirectory),
          windows(main, ui, menus) {}

    MainMenus menus;
    DetailsPanel details;
    ModListRefresher modList;
    InstallCommands installing;
    HousekeepingCommands housekeeping;
    IntakeCommands intake;
    LaunchCommands launching;
    frmChangeT2Dir chooser;
    MenuWindows windows;
};

frmSelector::frmSelector(const Services& services)
    : LibraryHost(services), ui_(std::make_unique<Ui::frmSelector>()),
      timRefreshModList_(MakeTimer(this, "timRefreshModList", kRefreshEveryMs)),
      timClickMod_(MakeTimer(this, "timClickMod", kFirstDetailsAfterMs)) {
    ui_->setupUi(this);
    parts_ = std::make_unique<Parts>(*this, *ui_);
    ConnectControls();
    ConnectCommands();
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
    connect(&parts_->chooser, &frmChangeT2Dir::QuitRequested, this, &frmSelector::EndProgram);
}

void frmSelector::ConnectCommands() {
    Parts& parts = *parts_;
    const auto open = [&parts](const char* address) {
        return [&parts, address] { parts.launching.Open(address); };
    };
    const std::pair<QAction*, std::function<void()>> commands[] = {
        {ui_->modChangeT2Directory, [&parts] { parts.chooser.Open(); }},
        {ui_->menuManagerModFilesRecompile,
         [this] { RecompileFromMenu(*this, *ui_->menuManagerFindModifiedFiles); }},
        {ui_->menuManagerInstallMapEditor, [&parts] { parts.launching.InstallMapEditor(); }},
        {ui_->menuManagerLaunchT2, [&parts] { parts.launching.LaunchGame(); }},
        {ui_->menuManagerLaunchMapEditor, [&parts] { parts.launching.LaunchMapEditor(); }},
        {ui_->menuManagarLaunchT2Dir, [this] { parts_->launching.OpenFolder(GameDirectory); }},
        {ui_->menuManagerLaunchQuillbayDir, [this] { parts_->launching.OpenFolder(ProgramDirectory); }},
        {ui_->menuManagerLaunchNimb, open("https://tempest-universe.example/")},
        {ui_->menuManagerLaunchZeph, open("https://tempest-fleet-command.example/")},
        {ui_->menuManagerLaunchLodestar, open("https://lodestar.example/")},
        {ui_->menuQuit, [this] { EndProgram(); }},
        {ui_->menuModInstall, [this] { InstallMod(); }},
        {ui_->menuModRefreshModList, [this] { RefreshModList({}); }},
        {ui_->menuModUninstall, [this] { UninstallMod(); }},
        {ui_->menuModCurrentModRemoveMod, [this] { RemoveMod(); }},
        {ui_->menuModCurrentModViewReadme, [&parts] { parts.launching.OpenSelectedReadme(); }},
        {ui_->menuModCurrentModOpen, [&parts] { parts.launching.OpenSelectedFolder(); }},
        {ui_->menuModCurrentModSubfolders, [&parts] { parts.housekeeping.MakeModSubfolders(); }},
        {ui_->menuModCurrentModRemoveSubfolders, [&parts] { parts.housekeeping.RemoveModSubfolders(); }},
        {ui_->menuModMakeNewFolder, [&parts] { parts.housekeeping.MakeNewModFolder(); }},
    };
    for (const auto& [item, command] : commands)
        parts.menus.Connect(*item, command);
}

bool frmSelector::Start() {
    timRefreshModList_->start();
    timClickMod_->start();
    parts_->details.ShowBeforeStart();
    SetWindowAlpha(*this, 1);
    show();
    if (isMaximized()) {
        showNormal();
    }
    repaint();
    registeredGame_ = ReadGameDirectory(services_.registry);
    GameDirectory = registeredGame_.path;
    PrepareLibraryFolder(services_.files, ProgramDirectory);
    RecoverMods(services_.files, LibraryFolder(ProgramDirectory));
    RefreshModList({.keepControls = true, .keepDetails = true});
    ReadSettings();
    FadeIn(*this, *this, FadeIntensity);
    if (Phase == ProgramPhase::Ended) {
        return false;
    }
    parts_->modList.CountAtStart();
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
    // Prefixes differ at their ends, which have to fit into the line.
    const QString prefix = ToQString(registeredGame_.prefix);
    const QString end = prefix.section(u'/', -kShownPrefixFolders);
    ShowOutcome(OutcomeText(QStringLiteral("Several Wine prefixes have a game; this is that of ") + end)
                    .Note(prefix)
                    .Note(QStringLiteral("Its registry changed last. The game directory: ") +
                          ShownPath(GameDirectory)));
}

void frmSelector::AskForGameDirectory() {
    parts_->modList.ShowNoGame();
    GameDirectory = kGameNotFound;
    ShowMessage(this, QStringLiteral("Pause"));
    if (Phase != ProgramPhase::Ended) {
        parts_->chooser.OpenModal();
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
    const int pictureHeight = withPicture ? DetailsPanel::kPictureHeight : 0;
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
    const int shift = !switches     ? 0
                      : withPicture ? -DetailsPanel::kPictureHeight
                                    : DetailsPanel::kPictureHeight;
    const int screenTop = screen()->geometry().top();
    const int top = withPicture ? std::max(screenTop, y() + shift) : y() + shift;
    if (switches) {
        ui_->pictureFrame->setVisible(withPicture);
        setFixedHeight(baseHeight_ + (withPicture ? DetailsPanel::kPictureHeight : 0));
    }
    if (top != y()) move(x(), top);
    layout()->activate();
    ui_->centralWidget->layout()->activate();
}

void frmSelector::keyPressEvent(QKeyEvent* event) {
    if (!PressFocusedButton(*this, *event)) QMainWindow::keyPressEvent(event);
}

void frmSelector::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        // The children take the new font after their window.
        QMetaObject::invokeMethod(this, &frmSelector::FitToFont, Qt::QueuedConnection);
    }
}

void frmSelector::ReadSettings() {
    const AppSettings& settings = services_.settings;
    parts_->menus.ReadSwitches(settings);
    FadeIntensity = ReadByte(settings, kFadeIntensityPreference);
    FadeSpeed = ReadByte(settings, kFadeSpeedPreference);
}

void frmSelector::InstallMod() { parts_->installing.InstallMod(); }

void frmSelector::UninstallMod() { parts_->installing.UninstallMod(); }

void frmSelector::UninstallAll(QWidget& asking) { parts_->installing.UninstallAll(asking); }

void frmSelector::RemoveMod() { parts_->housekeeping.RemoveMod(); }

void frmSelector::RefreshModList(const RefreshOptions& options) { parts_->modList.RefreshModList(options); }

void frmSelector::ShowModDetails() {
    const auto row = SelectedMod();
    if (row && !row->path.Empty()) {
        parts_->details.ShowMod(Join(LibraryFolder(ProgramDirectory), row->path.text));
        ui_->lstMods->setFocus();
    } else {
        parts_->details.ShowNoMod();
    }
    emit Signals.ModDetailsShown();
}

std::string frmSelector::GamePrefix() const {
    return GameDirectory == registeredGame_.path ? registeredGame_.prefix : std::string();
}

const DetailsPanel& frmSelector::Details() const { return parts_->details; }

std::optional<std::size_t> frmSelector::ShownFileCount() const { return parts_->details.ShownFileCount(); }

void frmSelector::SetMainMenusEnabled(bool enabled) { parts_->menus.SetEnabled(enabled); }

bool frmSelector::MayEnd() { return parts_->windows.MayEnd(); }

void frmSelector::lstMods_Click() {
    parts_->modList.SetButtons();
    ShowModDetails();
}

void frmSelector::lstMods_MouseDown(QPoint globalPosition) {
    QMenu& menu = ModRows().empty() ? parts_->intake.MenuForNoMods() : *ui_->menuModCurrentMod;
    menu.popup(globalPosition);
}

void frmSelector::timRefreshModList_Timer() {
    const int interval = isMinimized() ? kRefreshMinimizedEveryMs : kRefreshEveryMs;
    if (timRefreshModList_->interval() != interval) timRefreshModList_->setInterval(interval);
    parts_->modList.FollowDisk();
}

void frmSelector::timClickMod_Timer() {
    timClickMod_->stop();
    ShowModDetails();
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
    if (Phase == ProgramPhase::Running && !MayEnd()) return;
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
