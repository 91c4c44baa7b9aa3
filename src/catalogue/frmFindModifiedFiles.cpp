#include "catalogue/frmFindModifiedFiles.h"

#include "catalogue/FileListText.h"
#include "common/QtText.h"
#include "common/ShowMessage.h"
#include "common/UpdateLock.h"
#include "effects/EffectHost.h"
#include "shell/frmSelector.h"
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

constexpr qint64 kPaintEveryMs = 16;
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

} // namespace

frmFindModifiedFiles::frmFindModifiedFiles(frmSelector& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmFindModifiedFiles>()) {
    ui_->setupUi(this);
    for (QWidget* row : std::initializer_list<QWidget*>{ui_->lblExtraFiles, ui_->lblTotalModifiedFiles,
                                                        ui_->lblGrandTotal, ui_->txtPath})
        RetainSize(*row);
    connect(ui_->cmdStart, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdStart_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, [this] { cancelRequested_ = true; });
    for (QCheckBox* view : {ui_->chkNew, ui_->chkModified})
        connect(view, &QCheckBox::clicked, this, &frmFindModifiedFiles::Redolist);
    ConnectActions();
}

frmFindModifiedFiles::~frmFindModifiedFiles() = default;

void frmFindModifiedFiles::Form_Load() {
    ++opening_;
    scan_.reset();
    found_ = {};
    busy_ = cancelRequested_ = filesMovedOrDeleted_ = false;
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
    if (busy_) return;
    const FileSystem& files = main_.GetServices().files;
    auto catalogue = FileCatalogue::LoadFileList(files, programDirectory_);
    if (!catalogue) {
        ShowError(this, QStringLiteral("FileList.txt could not be read, so nothing was compared.\n\n") +
                            Reason(catalogue.Error()));
        return;
    }
    busy_ = true;
    cancelRequested_ = false;
    found_ = {};
    scan_ = std::make_unique<GameScan>(files, gameDirectory_, std::move(*catalogue), found_);
    ShowScanLayout();
    if (RunScan()) FinishScan();
}

bool frmFindModifiedFiles::RunScan() {
    const QPointer<frmFindModifiedFiles> self = this;
    const unsigned opening = opening_;
    const auto overtaken = [&] {
        return !self || opening != opening_ || !isVisible() || Host().Phase == ProgramPhase::Ended;
    };
    sincePaint_.start();
    while (scan_->Step()) {
        const bool passBegins = scan_->InSecondPass() && ui_->lblGrandTotal->isHidden();
        if (passBegins || sincePaint_.hasExpired(kPaintEveryMs)) {
            ShowScanProgress();
            sincePaint_.restart();
        }
        QCoreApplication::processEvents();
        if (overtaken()) return false;
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
    for (QLabel* label : {ui_->lblTotalModifiedFiles, ui_->lblGrandTotal})
        label->setVisible(scan_->InSecondPass());
    ShowCounts();

    const QSignalBlocker quiet(ui_->lstList);
    if (ui_->chkNew->isChecked()) AddRows(found_.newFiles, shownNew_, Qt::Unchecked);
    if (ui_->chkModified->isChecked()) AddRows(found_.modifiedFiles, shownModified_, Qt::Unchecked);
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
    busy_ = false;
    ChangeRows([](QListWidget& list) {
        for (int row = 0; row < list.count(); ++row)
            list.item(row)->setCheckState(Qt::Checked);
    });
    ShowResultLayout();
}

void frmFindModifiedFiles::Redolist() {
    ChangeRows([this](QListWidget& list) {
        list.clear();
        if (ui_->chkNew->isChecked()) AddRows(found_.newFiles, 0, Qt::Checked);
        if (ui_->chkModified->isChecked()) AddRows(found_.modifiedFiles, 0, Qt::Checked);
    });
    shownNew_ = found_.newFiles.size();
    shownModified_ = found_.modifiedFiles.size();
}

void frmFindModifiedFiles::ChangeRows(const std::function<void(QListWidget&)>& change) {
    QListWidget& list = *ui_->lstList;
    {
        const UpdateLock lock(list);
        const QSignalBlocker quiet(list);
        const int top = list.indexAt({1, 1}).row();
        change(list);
        const int last = list.count() - 1;
        if (top >= 0 && last >= 0)
            list.scrollToItem(list.item(std::min(top, last)), QAbstractItemView::PositionAtTop);
    }
    lstList_ItemCheck();
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
    else if (enter)
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
    for (QWidget* hidden :
         std::initializer_list<QWidget*>{ui_->panResults, ui_->pgbStatus, ui_->txtPath, ui_->cmdBrowse,
                                         ui_->cmdCancel, ui_->pgbFileStatus})
        hidden->hide();
    for (QLabel* shown : {ui_->lblExtraFiles, ui_->lblTotalModifiedFiles, ui_->lblGrandTotal})
        shown->show();
    ui_->cmdStart->setText(QStringLiteral("&Scan"));
    ui_->cmdStart->show();
    ui_->cmdStart->setFocus();
    MakeDefault(*ui_->cmdStart);
    ui_->panStatus->setMinimumWidth(kStatusCharacters * fontMetrics().averageCharWidth());
    setWindowState(Qt::WindowNoState);
    LayOut();
    resize(sizeHint());
}

void frmFindModifiedFiles::ShowScanLayout() {
    for (QWidget* hidden :
         std::initializer_list<QWidget*>{ui_->txtPath, ui_->cmdBrowse, ui_->cmdStart, ui_->lblExtraFiles,
                                         ui_->lblTotalModifiedFiles, ui_->lblGrandTotal})
        hidden->hide();
    for (QCheckBox* view : {ui_->chkNew, ui_->chkModified})
        view->setEnabled(true);
    QSize wanted = size(); // before the layouts make the window as large as they need
    if (ui_->panResults->isHidden()) wanted.rwidth() += kListCharacters * fontMetrics().averageCharWidth();
    for (QWidget* shown : std::initializer_list<QWidget*>{ui_->panResults, ui_->pgbStatus, ui_->cmdCancel})
        shown->show();
    ui_->cmdCancel->setFocus();
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
    for (QWidget* hidden : std::initializer_list<QWidget*>{ui_->cmdCancel, ui_->pgbStatus})
        hidden->hide();
    ui_->lblProgress->setText(QStringLiteral("Path:"));
    ui_->cmdStart->setText(QStringLiteral("Re&scan"));
    ui_->cmdBrowse->setEnabled(true);
    for (QWidget* shown : std::initializer_list<QWidget*>{ui_->txtPath, ui_->cmdBrowse, ui_->cmdStart})
        shown->show();
    if (hadFocus) ui_->cmdStart->setFocus();
    LayOut();
    ResizeTo(size().shrunkBy({0, 0, 0, heightAdded_}));
    repaint();
}

} // namespace quillbay
