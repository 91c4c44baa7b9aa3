#include "catalogue/window/frmFindModifiedFiles.h"

#include "catalogue/FileList.h"
#include "common/window/PaintClock.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/UpdateLock.h"
#include "effects/window/EffectHost.h"
#include "library/window/LibraryHost.h"
#include "ui_frmFindModifiedFiles.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMargins>
#include <QPointer>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr int kStatusCharacters = 54;    ///< width of the status frame
constexpr int kListCharacters = 62;      ///< width of the list when it appears
constexpr qint64 kUsualFileCount = 6836; ///< of a fresh, unpatched installation

/// Whole, with the user's separators.
QString Grouped(double number) {
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator);
    return locale.toString(number, 'f', 0);
}

QString Grouped(std::size_t number) { return Grouped(static_cast<double>(number)); }

/// Digits in groups of three with the user's separator; zero is empty.
QString Masked(std::uint64_t number) {
    if (number == 0) return {};
    QString text = QString::number(number);
    const QString separator = QLocale().groupSeparator();
    for (auto at = text.size() - 3; at > 0; at -= 3)
        text.insert(at, separator);
    return text;
}

void RetainSize(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

void SetVisible(bool visible, std::initializer_list<QWidget*> widgets) {
    for (QWidget* widget : widgets)
        widget->setVisible(visible);
}

} // namespace

frmFindModifiedFiles::frmFindModifiedFiles(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmFindModifiedFiles>()) {
    ui_->setupUi(this);
    for (QWidget* row : std::initializer_list<QWidget*>{ui_->lblExtraFiles, ui_->lblTotalModifiedFiles,
                                                        ui_->lblGrandTotal, ui_->txtPath})
        RetainSize(*row);
    connect(ui_->cmdStart, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdStart_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, [this] { cancelRequested_ = true; });
    for (QCheckBox* view : {ui_->chkNew, ui_->chkModified})
        connect(view, &QCheckBox::toggled, this, &frmFindModifiedFiles::Redolist);
    ConnectActions();
}

frmFindModifiedFiles::~frmFindModifiedFiles() = default;

void frmFindModifiedFiles::Form_Load() {
    scan_.reset();
    found_ = {};
    scanning_ = cancelRequested_ = filesMovedOrDeleted_ = false;
    gameDirectory_ = main_.GameDirectory;
    programDirectory_ = main_.ProgramDirectory;
    for (QCheckBox* view : {ui_->chkNew, ui_->chkModified}) {
        view->setEnabled(true);
        view->setChecked(true);
    }
    ui_->txtPath->clear();
    Redolist();
    ShowTotals();
    ShowCompactLayout();
}

void frmFindModifiedFiles::ShowTotals() {
    const FileSystem& files = main_.GetServices().files;
    const CatalogueTotals normal =
        CountRecords(ReadFileList(files, programDirectory_).ValueOr(std::string()));
    const GameTotals current = CountGame(files, gameDirectory_);
    fileCount_ = current.files;
    ui_->lblNumberOfFiles->setText(QStringLiteral("Normal number of files: ") + Grouped(normal.records));
    ui_->lblNormalSize->setText(QStringLiteral("Normal total size: ") + Grouped(normal.bytes) +
                                QStringLiteral(" bytes"));
    ui_->lblCurNumOfFiles->setText(Masked(current.files));
    ui_->lblCurTotalSize->setText(QStringLiteral("Current total size: ") + Masked(current.bytes) +
                                  QStringLiteral(" bytes"));
    ui_->lblExtraFiles->setText(QStringLiteral("Total new files: ") +
                                Grouped(static_cast<double>(current.files) - kUsualFileCount));
    for (QLabel* label : {ui_->lblTotalModifiedFiles, ui_->lblGrandTotal, ui_->lblProgress})
        label->clear();
}

void frmFindModifiedFiles::cmdStart_Click() {
    if (scanning_) return;
    auto catalogue = LoadCatalogue();
    if (!catalogue) return;
    scanning_ = true;
    cancelRequested_ = false;
    found_ = {};
    scan_ =
        std::make_unique<GameScan>(main_.GetServices().files, gameDirectory_, std::move(*catalogue), found_);
    ShowScanLayout();
    if (RunScan()) FinishScan();
}

std::optional<FileCatalogue> frmFindModifiedFiles::LoadCatalogue() {
    auto catalogue = FileCatalogue::LoadFileList(main_.GetServices().files, programDirectory_);
    if (catalogue) return std::move(*catalogue);
    const QString reason =
        catalogue.Error() == std::errc::bad_message
            ? QStringLiteral("It names no folder of the game. Its lines must end as in Windows.")
            : Reason(catalogue.Error());
    ShowError(this, QStringLiteral("FileList.txt could not be read, so nothing was compared.\n\n") + reason);
    return std::nullopt;
}

bool frmFindModifiedFiles::RunScan() {
    const QPointer<frmFindModifiedFiles> self = this;
    const unsigned opening = Opening();
    PaintClock clock;
    while (scan_->Step()) {
        const bool passBegins = scan_->InSecondPass() && ui_->lblGrandTotal->isHidden();
        if (clock.Due() || passBegins) ShowScanProgress();
        QCoreApplication::processEvents();
        if (!self || opening != Opening()) return false;
        if (!isVisible() || Host().Phase == ProgramPhase::Ended) {
            scan_.reset();
            scanning_ = false;
            return false;
        }
        if (std::exchange(cancelRequested_, false)) break;
    }
    return true;
}

void frmFindModifiedFiles::ShowScanProgress() {
    const std::size_t total = 2 * fileCount_;
    const std::size_t processed = scan_->Processed();
    ui_->pgbStatus->setValue(static_cast<int>(std::min<std::size_t>(100, processed * 100 / (total + 1))));
    ui_->lblProgress->setText(QStringLiteral("Progress: ") + Grouped(processed) + QStringLiteral(" out of ") +
                              Grouped(total));
    ui_->lblExtraFiles->show();
    SetVisible(scan_->InSecondPass(), {ui_->lblTotalModifiedFiles, ui_->lblGrandTotal});
    ShowCounts();

    const QSignalBlocker quiet(ui_->lstList);
    AddRows(found_.newFiles, shownNew_, Qt::Unchecked);
    AddRows(found_.modifiedFiles, shownModified_, Qt::Unchecked);
    shownNew_ = found_.newFiles.size();
    shownModified_ = found_.modifiedFiles.size();
}

void frmFindModifiedFiles::ShowCounts() {
    const std::size_t newCount = found_.newFiles.size();
    const std::size_t modifiedCount = found_.modifiedFiles.size();
    ui_->lblExtraFiles->setText(QStringLiteral("Total new files found: ") + Grouped(newCount));
    ui_->lblTotalModifiedFiles->setText(QStringLiteral("Total modified files found: ") +
                                        Grouped(modifiedCount));
    ui_->lblGrandTotal->setText(QStringLiteral("Total modded files: ") + Grouped(newCount + modifiedCount));
}

void frmFindModifiedFiles::FinishScan() {
    ShowScanProgress();
    scan_.reset();
    scanning_ = false;
    // All that was found, whatever the view boxes say: a click of one during the scan left half a list.
    FillList(true, true);
    ShowResultLayout();
}

void frmFindModifiedFiles::Redolist() { FillList(ui_->chkNew->isChecked(), ui_->chkModified->isChecked()); }

void frmFindModifiedFiles::FillList(bool withNew, bool withModified) {
    ChangeRows([&](QListWidget& list) {
        list.clear();
        if (withNew) AddRows(found_.newFiles, 0, Qt::Checked);
        if (withModified) AddRows(found_.modifiedFiles, 0, Qt::Checked);
    });
    if (withNew || withModified || scanning_)
        lstList_ItemCheck();
    else
        itemChecked_ = false; // the buttons stay as they are
    shownNew_ = found_.newFiles.size();
    shownModified_ = found_.modifiedFiles.size();
}

void frmFindModifiedFiles::ChangeRows(const std::function<void(QListWidget&)>& change) {
    QListWidget& list = *ui_->lstList;
    const UpdateLock lock(list);
    const QSignalBlocker quiet(list);
    const int top = list.indexAt({1, 1}).row();
    change(list);
    const int last = list.count() - 1;
    if (top >= 0 && last >= 0)
        list.scrollToItem(list.item(std::min(top, last)), QAbstractItemView::PositionAtTop);
}

void frmFindModifiedFiles::AddRows(const std::vector<std::string>& paths, std::size_t from,
                                   Qt::CheckState state) {
    for (std::size_t at = from; at < paths.size(); ++at) {
        auto item = std::make_unique<QListWidgetItem>(ToQString(paths[at]));
        item->setCheckState(state);
        ui_->lstList->addItem(item.release());
    }
}

void frmFindModifiedFiles::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && ui_->cmdCancel->isVisible())
        ui_->cmdCancel->click();
    else if (enter && !event->isAutoRepeat())
        (ui_->cmdStart->isDefault() ? ui_->cmdStart : ui_->cmdCopy)->click();
    else
        EffectWindow::keyPressEvent(event);
}

void frmFindModifiedFiles::MakeDefault(QPushButton& button) {
    for (QPushButton* each : {ui_->cmdStart, ui_->cmdCopy})
        each->setDefault(each == &button);
}

void frmFindModifiedFiles::LayOut() {
    // From the inside out: what has changed inside would reach the window by later events only.
    for (QWidget* widget :
         {static_cast<QWidget*>(ui_->frameChecker), ui_->panStatus, static_cast<QWidget*>(this)}) {
        widget->layout()->invalidate();
        widget->layout()->activate();
    }
}

void frmFindModifiedFiles::ResizeTo(QSize wanted) {
    if (!isMaximized() && !isFullScreen()) resize(wanted);
}

void frmFindModifiedFiles::ShowCompactLayout() {
    SetVisible(false, {ui_->panResults, ui_->pgbStatus, ui_->txtPath, ui_->cmdBrowse, ui_->cmdCancel,
                       ui_->pgbFileStatus});
    SetVisible(true, {ui_->lblExtraFiles, ui_->lblTotalModifiedFiles, ui_->lblGrandTotal, ui_->cmdStart});
    ui_->cmdStart->setText(QStringLiteral("&Scan"));
    ui_->cmdStart->setFocus();
    MakeDefault(*ui_->cmdStart);
    ui_->panStatus->setMinimumWidth(kStatusCharacters * fontMetrics().averageCharWidth());
    setWindowState(Qt::WindowNoState);
    LayOut();
    resize(sizeHint());
}

void frmFindModifiedFiles::ShowScanLayout() {
    SetVisible(false, {ui_->txtPath, ui_->cmdBrowse, ui_->cmdStart, ui_->lblExtraFiles,
                       ui_->lblTotalModifiedFiles, ui_->lblGrandTotal});
    for (QCheckBox* view : {ui_->chkNew, ui_->chkModified})
        view->setEnabled(true);
    QSize wanted = size(); // before the layouts make the window as large as they need
    if (ui_->panResults->isHidden()) wanted.rwidth() += kListCharacters * fontMetrics().averageCharWidth();
    SetVisible(true, {ui_->panResults, ui_->pgbStatus, ui_->cmdCancel});
    ui_->lstList->setFocus(); // not Cancel: an Enter key that is held down on Scan would press it
    Redolist();
    MakeDefault(*ui_->cmdCopy);
    LayOut();
    heightAdded_ = ui_->pgbStatus->sizeHint().height() + ui_->layChecker->spacing();
    ResizeTo(wanted.grownBy({0, 0, 0, heightAdded_}));
    ShowScanProgress();
    repaint();
}

void frmFindModifiedFiles::ShowResultLayout() {
    const bool hadFocus = ui_->cmdCancel->hasFocus();
    SetVisible(false, {ui_->cmdCancel, ui_->pgbStatus});
    ui_->lblProgress->setText(QStringLiteral("Path:"));
    ui_->cmdStart->setText(QStringLiteral("Re&scan"));
    ui_->cmdBrowse->setEnabled(true);
    SetVisible(true, {ui_->txtPath, ui_->cmdBrowse, ui_->cmdStart});
    if (hadFocus) ui_->cmdStart->setFocus();
    LayOut();
    ResizeTo(size().shrunkBy({0, 0, 0, heightAdded_}));
    repaint();
}

} // namespace quillbay
