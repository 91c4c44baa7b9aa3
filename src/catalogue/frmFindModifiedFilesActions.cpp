#include "catalogue/FolderOrFileDialog.h"
#include "catalogue/frmFindModifiedFiles.h"
#include "common/PathText.h"
#include "common/QtText.h"
#include "common/ShowMessage.h"
#include "shell/GameDirectory.h"
#include "shell/ShownProgress.h"
#include "shell/frmSelector.h"
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

QString WhyNothing(FileActionState state) {
    switch (state) {
    case FileActionState::Ready:
        break;
    case FileActionState::GameUnreadable:
        return QStringLiteral("The game directory could not be read");
    case FileActionState::NoDestination:
        return QStringLiteral("The destination folder could not be read or made");
    case FileActionState::DestinationIsGame:
        return QStringLiteral("The path is that of the game directory itself");
    }
    return {};
}

QString Lines(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += name + '\n';
    return ToQString(text);
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
    const bool enabled = !busy_ && !filesMovedOrDeleted_ && pathIsFolder_ && itemChecked_;
    for (QPushButton* button : {ui_->cmdCopy, ui_->cmdMove, ui_->cmdDelete})
        button->setEnabled(enabled);
}

void frmFindModifiedFiles::lblInvert_Click() {
    if (busy_) return;
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
    if (ShowMessage(this,
                    QStringLiteral("Are you ABSOLUTELY SURE you want to PERMANENTLY DELETE EVERY FILE listed "
                                   "in the text box?"),
                    QStringLiteral("Confirm deletion?"), QMessageBox::Warning,
                    QMessageBox::Yes | QMessageBox::No, {}, Lines(names)) != QMessageBox::Yes)
        return;

    const FileActionResult result = Run(FileAction::Delete, {}, names);
    if (result.state == FileActionState::Ready) {
        if (newFiles) ui_->chkNew->setEnabled(false);
        if (modifiedFiles) ui_->chkModified->setEnabled(false);
        SetFilesMovedOrDeleted();
    }
    Report(FileAction::Delete, result);
}

void frmFindModifiedFiles::CopyOrMove(FileAction action) {
    std::string path = FromQString(ui_->txtPath->text());
    if (path.empty() || !IsSeparator(path.back())) {
        path += '\\';
        ui_->txtPath->setText(ToQString(path));
    }
    const FileActionResult result = Run(action, path, CheckedNames());
    txtPath_Change(); // the folder may be a new one
    if (action == FileAction::Move && result.state == FileActionState::Ready) SetFilesMovedOrDeleted();
    Report(action, result);
}

std::vector<std::string> frmFindModifiedFiles::CheckedNames() const {
    std::vector<std::string> names;
    for (int row = 0; row < ui_->lstList->count(); ++row) {
        const QListWidgetItem& item = *ui_->lstList->item(row);
        if (item.checkState() == Qt::Checked) names.push_back(FromQString(item.text()));
    }
    return names;
}

FileActionResult frmFindModifiedFiles::Run(FileAction action, const std::string& destination,
                                           const std::vector<std::string>& names) {
    FileSystem& files = main_.GetServices().files;
    ShownProgress progress(*ui_->pgbFileStatus);
    return RunFileAction(files, PlanFileAction(files, action, gameDirectory_, destination, names),
                         [&](std::size_t done, std::size_t total) { progress.Set(done, total); });
}

void frmFindModifiedFiles::SetFilesMovedOrDeleted() {
    filesMovedOrDeleted_ = true;
    ApplyButtonRule();
}

void frmFindModifiedFiles::Report(FileAction action, const FileActionResult& result) {
    const QString done = DoneWord(action);
    if (result.state != FileActionState::Ready) {
        ShowError(this, WithPath(WhyNothing(result.state) + QStringLiteral(", so nothing was ") + done + u'.',
                                 result.concerned, result.error));
    } else if (!result.failed.empty()) {
        const auto count = result.failed.size();
        const QString sentence =
            count == 1 ? QStringLiteral("1 file was not %1:").arg(done)
                       : QStringLiteral("%1 files were not %2. The first of them:").arg(count).arg(done);
        ShowError(this, WithPath(sentence, result.failed.front(), result.firstError));
    }
}

} // namespace quillbay
