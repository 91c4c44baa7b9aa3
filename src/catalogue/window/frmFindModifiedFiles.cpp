#include "catalogue/window/frmFindModifiedFiles.h"

#include "catalogue/FileList.h"
#include "catalogue/window/FinderNumbers.h"
#include "catalogue/window/FinderReport.h"
#include "common/window/FolderOrFileDialog.h"
#include "common/window/PaintClock.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "effects/window/EffectHost.h"
#include "library/GameDirectory.h"
#include "library/window/LibraryHost.h"
#include "platform/PathText.h"
#include "ui_frmFindModifiedFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMargins>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr int kStatusCharacters = 54;    ///< width of the status frame
constexpr int kListCharacters = 62;      ///< width of the list when it appears
constexpr qint64 kUsualFileCount = 6836; ///< of a fresh, unpatched installation

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
    connect(ui_->txtPath, &QLineEdit::textChanged, this, &frmFindModifiedFiles::txtPath_Change);
    connect(ui_->lstList, &QListWidget::itemChanged, this, &frmFindModifiedFiles::lstList_ItemCheck);
    connect(ui_->lblInvert, &ClickLabel::Clicked, this, &frmFindModifiedFiles::lblInvert_Click);
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdBrowse_Click);
    connect(ui_->cmdCopy, &QPushButton::clicked, this, [this] { CopyOrMove(FileAction::Copy); });
    connect(ui_->cmdMove, &QPushButton::clicked, this, [this] { CopyOrMove(FileAction::Move); });
    connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdDelete_Click);
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
    ui_->lblFinderOutcome->ShowText({});
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
    ui_->lblFinderOutcome->ShowText({});
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

    if (ui_->chkNew->isChecked()) ui_->lstList->AddRows(found_.newFiles, shownNew_, Qt::Unchecked);
    if (ui_->chkModified->isChecked())
        ui_->lstList->AddRows(found_.modifiedFiles, shownModified_, Qt::Unchecked);
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
    Redolist();
    ShowResultLayout();
}

void frmFindModifiedFiles::Redolist() {
    FinderList& list = *ui_->lstList;
    const bool withNew = ui_->chkNew->isChecked();
    const bool withModified = ui_->chkModified->isChecked();
    list.ChangeRows([&] {
        list.clear();
        if (withNew) list.AddRows(found_.newFiles, 0, Qt::Checked);
        if (withModified) list.AddRows(found_.modifiedFiles, 0, Qt::Checked);
    });
    if (withNew || withModified || scanning_)
        lstList_ItemCheck();
    else
        itemChecked_ = false; // the buttons stay as they are
    shownNew_ = found_.newFiles.size();
    shownModified_ = found_.modifiedFiles.size();
}

void frmFindModifiedFiles::txtPath_Change() {
    const QString path = ui_->txtPath->text();
    pathIsFolder_ = QDir::isAbsolutePath(QString(path).replace(u'\\', u'/')) &&
                    IsExistingFolder(main_.GetServices().files, FromQString(path));
    ApplyButtonRule();
}

void frmFindModifiedFiles::lstList_ItemCheck() {
    itemChecked_ = ui_->lstList->HasCheckedRow();
    ApplyButtonRule();
}

void frmFindModifiedFiles::ApplyButtonRule() {
    const bool enabled = !scanning_ && !filesMovedOrDeleted_ && pathIsFolder_ && itemChecked_;
    const QString whyNot = WhyNoAction();
    for (QPushButton* button : {ui_->cmdCopy, ui_->cmdMove, ui_->cmdDelete}) {
        button->setEnabled(enabled);
        button->setToolTip(whyNot);
    }
}

QString frmFindModifiedFiles::WhyNoAction() const {
    if (scanning_) return QStringLiteral("The scan is still running.");
    if (filesMovedOrDeleted_)
        return QStringLiteral(
            "Files have been moved or deleted. Close this window and open it again to go on.");
    if (!pathIsFolder_)
        return QStringLiteral(
            "There must be the path of an existing folder in the path box, for Delete, too.");
    if (!itemChecked_) return QStringLiteral("No file is checked.");
    return {};
}

void frmFindModifiedFiles::lblInvert_Click() {
    if (scanning_) return;
    const QString caption = ui_->lblInvert->text();
    ui_->lblInvert->setText(QStringLiteral("Click me to invert selection. (Inverting . . .)"));
    ui_->panResults->layout()->activate();
    ui_->lblInvert->repaint();
    ui_->lstList->Invert();
    lstList_ItemCheck();
    ui_->lblInvert->setText(caption);
}

void frmFindModifiedFiles::cmdBrowse_Click() {
    // On the heap: the end of the program may destroy it while it is open.
    const QPointer<FolderOrFileDialog> dialog = new FolderOrFileDialog(
        this, QStringLiteral("Select directory"), ToQString(gameDirectory_), QStringLiteral("Folders"));
    const bool chosen = dialog->exec() == QDialog::Accepted;
    if (!dialog) return;
    ui_->txtPath->setText(chosen ? dialog->ChosenPath().trimmed() : QString());
    delete dialog;
}

void frmFindModifiedFiles::cmdDelete_Click() {
    const auto plan = Plan(FileAction::Delete, {}, ui_->lstList->Paths(false));
    if (!plan) return;
    const QString doomed = ListedFiles(*plan);
    if (!plan->refusal && doomed.isEmpty())
        return ShowError(this, QStringLiteral("No file of the kinds chosen with New and Mod. is new or "
                                              "modified any more, so nothing was deleted."));
    if (!plan->refusal &&
        ShowMessage(this,
                    QStringLiteral("Are you ABSOLUTELY SURE you want to PERMANENTLY DELETE EVERY FILE listed "
                                   "in the text box?"),
                    QStringLiteral("Confirm deletion?"), QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, TellUnchanged(*plan), doomed,
                    QMessageBox::No) != QMessageBox::Yes)
        return;

    const FileActionResult result = Run(*plan);
    if (!result.refusal) {
        for (QCheckBox* view : {ui_->chkNew, ui_->chkModified})
            if (view->isChecked()) view->setEnabled(false);
        SetFilesMovedOrDeleted();
    }
    Report(*plan, result);
}

void frmFindModifiedFiles::CopyOrMove(FileAction action) {
    std::string path = FromQString(ui_->txtPath->text());
    if (path.empty() || !IsSeparator(path.back())) {
        path += '\\';
        ui_->txtPath->setText(ToQString(path));
    }
    const auto plan = Plan(action, path, ui_->lstList->Paths(true));
    if (!plan) return;
    const FileActionResult result = Run(*plan);
    txtPath_Change(); // the folder may be a new one
    if (action == FileAction::Move && !result.refusal) SetFilesMovedOrDeleted();
    Report(*plan, result);
}

std::optional<FileActionPlan> frmFindModifiedFiles::Plan(FileAction action, const std::string& destination,
                                                         const std::vector<std::string>& names) {
    const bool takesAway = action != FileAction::Copy;
    const auto catalogue = takesAway ? LoadCatalogue() : std::nullopt;
    if (takesAway && !catalogue) return std::nullopt;
    return PlanFileAction(main_.GetServices().files, action, gameDirectory_, destination, names,
                          catalogue ? &*catalogue : nullptr);
}

FileActionResult frmFindModifiedFiles::Run(const FileActionPlan& plan) {
    ShownProgress progress(*ui_->pgbFileStatus);
    return RunFileAction(main_.GetServices().files, plan,
                         [&](std::size_t done, std::size_t total) { progress.Set(done, total); });
}

void frmFindModifiedFiles::SetFilesMovedOrDeleted() {
    filesMovedOrDeleted_ = true;
    ApplyButtonRule();
}

void frmFindModifiedFiles::Report(const FileActionPlan& plan, const FileActionResult& result) {
    const OutcomeText outcome = Describe(plan, result);
    main_.ShowOutcome(outcome);
    ui_->lblFinderOutcome->ShowText(outcome.Sentence(), outcome.ToolTip());
    if (const QString complaint = Complaint(plan, result); !complaint.isEmpty()) ShowError(this, complaint);
}

void frmFindModifiedFiles::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && ui_->cmdCancel->isVisible())
        ui_->cmdCancel->click();
    else if (enter && !event->isAutoRepeat() && !qobject_cast<QPushButton*>(focusWidget()))
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
