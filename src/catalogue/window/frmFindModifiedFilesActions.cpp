#include "catalogue/window/frmFindModifiedFiles.h"
#include "common/window/FolderOrFileDialog.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/GameDirectory.h"
#include "library/window/LibraryHost.h"
#include "platform/PathText.h"
#include "ui_frmFindModifiedFiles.h"

#include <QDir>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace quillbay {

namespace {

QString DoneWord(FileAction action) {
    switch (action) {
    case FileAction::Copy:
        return QStringLiteral("copied");
    case FileAction::Move:
        return QStringLiteral("moved");
    case FileAction::Delete:
        return QStringLiteral("deleted");
    }
    return {};
}

QString WhyNothing(FileActionRefusal::Cause cause) {
    using Cause = FileActionRefusal::Cause;
    switch (cause) {
    case Cause::GameUnreadable:
        return QStringLiteral("The game directory could not be read");
    case Cause::NoDestination:
        return QStringLiteral("The destination folder could not be read or made");
    case Cause::DestinationIsGame:
        return QStringLiteral("The path is that of the game directory itself");
    }
    return {};
}

OutcomeText Describe(const FileActionPlan& plan, const FileActionResult& result) {
    const QString done = DoneWord(plan.action);
    if (result.refusal) {
        return OutcomeText(QStringLiteral("Nothing was ") + done)
            .Note(WithPath(WhyNothing(result.refusal->cause), result.refusal->concerned,
                           result.refusal->error));
    }
    return OutcomeText(QStringLiteral("Find Modified/New files"))
        .Count(result.done, done)
        .Files(result.failed, QStringLiteral("not ") + done)
        .Files(plan.unchanged, QStringLiteral("kept because they are as recorded"));
}

/// A line for each file that is there.
QString Lines(const std::vector<FileActionItem>& items) {
    std::string text;
    for (const FileActionItem& item : items)
        if (!item.from.empty()) text += item.name + '\n';
    return ToQString(text);
}

/// Empty when everything listed is still new or modified.
QString TellUnchanged(const std::vector<std::string>& names) {
    if (names.empty()) return {};
    return WithPath(names.size() == 1
                        ? QStringLiteral("1 file is no longer new or modified and stays in the game:")
                        : QStringLiteral("%1 files are no longer new or modified and stay in the game. The "
                                         "first of them:")
                              .arg(names.size()),
                    names.front(), {});
}

/// True for a click or a key that presses what has the focus.
bool IsPress(const QWidget& widget, const QEvent& event) {
    if (event.type() == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        return mouse.button() == Qt::LeftButton && widget.rect().contains(mouse.position().toPoint());
    }
    if (event.type() != QEvent::KeyPress) return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    const int key = press.key();
    return !press.isAutoRepeat() && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
}

} // namespace

void frmFindModifiedFiles::ConnectActions() {
    connect(ui_->txtPath, &QLineEdit::textChanged, this, &frmFindModifiedFiles::txtPath_Change);
    connect(ui_->lstList, &QListWidget::itemChanged, this, &frmFindModifiedFiles::lstList_ItemCheck);
    connect(ui_->cmdBrowse, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdBrowse_Click);
    connect(ui_->cmdCopy, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdCopy_Click);
    connect(ui_->cmdMove, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdMove_Click);
    connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmFindModifiedFiles::cmdDelete_Click);
    ui_->lblInvert->installEventFilter(this);
}

bool frmFindModifiedFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        QFont font = ui_->lblInvert->font();
        font.setUnderline(event->type() == QEvent::FocusIn);
        ui_->lblInvert->setFont(font);
    }
    if (!IsPress(*ui_->lblInvert, *event)) return EffectWindow::eventFilter(watched, event);
    lblInvert_Click();
    return true;
}

void frmFindModifiedFiles::txtPath_Change() {
    const QString path = ui_->txtPath->text();
    pathIsFolder_ = QDir::isAbsolutePath(QString(path).replace(u'\\', u'/')) &&
                    IsExistingFolder(main_.GetServices().files, FromQString(path));
    ApplyButtonRule();
}

void frmFindModifiedFiles::lstList_ItemCheck() {
    itemChecked_ = false;
    for (int row = 0; row < ui_->lstList->count() && !itemChecked_; ++row)
        itemChecked_ = ui_->lstList->item(row)->checkState() == Qt::Checked;
    ApplyButtonRule();
}

void frmFindModifiedFiles::ApplyButtonRule() {
    const bool enabled = !scanning_ && !filesMovedOrDeleted_ && pathIsFolder_ && itemChecked_;
    for (QPushButton* button : {ui_->cmdCopy, ui_->cmdMove, ui_->cmdDelete})
        button->setEnabled(enabled);
}

void frmFindModifiedFiles::lblInvert_Click() {
    if (scanning_) return;
    const QString caption = ui_->lblInvert->text();
    ui_->lblInvert->setText(QStringLiteral("Click me to invert selection. (Inverting . . .)"));
    ui_->panResults->layout()->activate();
    ui_->lblInvert->repaint();
    ChangeRows([](QListWidget& list) {
        for (int row = 0; row < list.count(); ++row) {
            QListWidgetItem& item = *list.item(row);
            item.setCheckState(item.checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
        }
    });
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

void frmFindModifiedFiles::cmdCopy_Click() { CopyOrMove(FileAction::Copy); }

void frmFindModifiedFiles::cmdMove_Click() { CopyOrMove(FileAction::Move); }

void frmFindModifiedFiles::cmdDelete_Click() {
    const auto includes = [](const QCheckBox& view) { return view.isChecked() && view.isEnabled(); };
    const bool newFiles = includes(*ui_->chkNew);
    const bool modifiedFiles = includes(*ui_->chkModified);
    std::vector<std::string> names;
    if (newFiles) names = found_.newFiles;
    if (modifiedFiles) names.insert(names.end(), found_.modifiedFiles.begin(), found_.modifiedFiles.end());
    const auto plan = Plan(FileAction::Delete, {}, names);
    if (!plan) return;
    const QString doomed = Lines(plan->items);
    if (!plan->refusal && doomed.isEmpty())
        return ShowError(this, QStringLiteral("No file of the kinds chosen with New and Mod. is new or "
                                              "modified any more, so nothing was deleted."));
    if (!plan->refusal &&
        ShowMessage(this,
                    QStringLiteral("Are you ABSOLUTELY SURE you want to PERMANENTLY DELETE EVERY FILE listed "
                                   "in the text box?"),
                    QStringLiteral("Confirm deletion?"), QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, TellUnchanged(plan->unchanged),
                    doomed) != QMessageBox::Yes)
        return;

    const FileActionResult result = Run(*plan);
    if (!result.refusal) {
        if (newFiles) ui_->chkNew->setEnabled(false);
        if (modifiedFiles) ui_->chkModified->setEnabled(false);
        SetFilesMovedOrDeleted();
    }
    main_.ShowOutcome(Describe(*plan, result));
    Report(*plan, result);
}

void frmFindModifiedFiles::CopyOrMove(FileAction action) {
    std::string path = FromQString(ui_->txtPath->text());
    if (path.empty() || !IsSeparator(path.back())) {
        path += '\\';
        ui_->txtPath->setText(ToQString(path));
    }
    const auto plan = Plan(action, path, CheckedNames());
    if (!plan) return;
    const FileActionResult result = Run(*plan);
    txtPath_Change(); // the folder may be a new one
    if (action == FileAction::Move && !result.refusal) SetFilesMovedOrDeleted();
    main_.ShowOutcome(Describe(*plan, result));
    Report(*plan, result);
}

std::vector<std::string> frmFindModifiedFiles::CheckedNames() const {
    std::vector<std::string> names;
    for (int row = 0; row < ui_->lstList->count(); ++row) {
        const QListWidgetItem& item = *ui_->lstList->item(row);
        if (item.checkState() == Qt::Checked) names.push_back(FromQString(item.text()));
    }
    return names;
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
    const QString done = DoneWord(plan.action);
    if (result.refusal) {
        const auto& [cause, concerned, error] = *result.refusal;
        return ShowError(this, WithPath(WhyNothing(cause) + QStringLiteral(", so nothing was ") + done + u'.',
                                        concerned, error));
    }
    QStringList paragraphs;
    if (const auto count = result.failed.size(); count > 0) {
        const QString sentence =
            count == 1 ? QStringLiteral("1 file was not %1:").arg(done)
                       : QStringLiteral("%1 files were not %2. The first of them:").arg(count).arg(done);
        paragraphs += WithPath(sentence, result.failed.front(), result.firstError);
    }
    // The question before Delete has told it already.
    if (plan.action == FileAction::Move && !plan.unchanged.empty())
        paragraphs += TellUnchanged(plan.unchanged);
    if (!paragraphs.isEmpty()) ShowError(this, paragraphs.join(QStringLiteral("\n\n")));
}

} // namespace quillbay
