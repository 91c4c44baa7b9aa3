#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "library/window/LibraryHost.h"
#include "odf/OdfLines.h"
#include "odf/window/frmAnalyzer.h"
#include "platform/ShellOpener.h"
#include "platform/SoundPlayer.h"
#include "ui_frmAnalyzer.h"

#include <QSignalBlocker>

#include <algorithm>

namespace quillbay {

namespace {

bool IsPictureName(const QString& name) {
    const QString ending = name.right(4).toLower();
    return ending == QLatin1String(".bmp") || ending == QLatin1String(".jpg") ||
           ending == QLatin1String(".gif");
}

/// Sounds in capitals are for the desktop's own player.
bool IsSoundName(const QString& name) {
    return name.endsWith(QLatin1String(".wav")) && name == name.toLower();
}

} // namespace

std::optional<ListedFile> frmAnalyzer::SelectedFile() const {
    const QListWidgetItem* item = ui_->lstFiles->SelectedItem();
    const auto row = item ? static_cast<std::size_t>(ui_->lstFiles->row(item)) : listed_.size();
    if (row >= listed_.size()) return std::nullopt;
    return listed_[row];
}

void frmAnalyzer::lstFiles_Click() {
    const auto file = SelectedFile();
    if (!file) return;
    HidePicture();
    for (QLabel* label : StatisticsLabels())
        label->clear();
    const bool isOdf = file->name.ends_with(kOdfEnding);
    const bool hasUnits = SelectedNodeText == "ships" || SelectedNodeText == "stations";
    if (isOdf && hasUnits) ShowStatistics(file->path);
    if (IsPictureName(ToQString(file->name)))
        PreviewPicture(file->path);
    else if (!isOdf && !hasUnits)
        ShowListAtFullHeight();
}

void frmAnalyzer::ShowStatistics(const std::string& file) {
    const UnitCaptions captions = ReadUnitStatistics(main_.GetServices().files, file);
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->setText(ToQString(captions[i]));
    ShortenList();
}

void frmAnalyzer::lstFiles_DblClick() {
    const auto file = SelectedFile();
    if (!file) return;
    const Services& services = main_.GetServices();
    if (IsSoundName(ToQString(file->name)))
        Ignore(services.sound.Play(file->path));
    else
        Ignore(services.shell.OpenWithShell(file->path));
}

bool frmAnalyzer::CanPaste() const {
    return !ClipPath.empty() && IsStillThere(main_.GetServices().files, {ClipPath, ClipName});
}

void frmAnalyzer::lstFiles_MouseDown(Qt::MouseButton button, QPoint globalPosition) {
    const bool hasRow = ui_->lstFiles->SelectedItem();
    const bool showsMenu = button == Qt::RightButton && (hasRow || !ClipPath.empty());
    for (QAction* action :
         {ui_->menuLstFilesRightOpen, ui_->menuLstFilesRightRemove, ui_->menuLstFilesRightCopy}) {
        action->setVisible(hasRow || !showsMenu);
        action->setEnabled(!hasRow || SelectedFile());
    }
    if (!showsMenu) return;
    ui_->menuLstFilesRightPaste->setEnabled(CanPaste());
    ui_->menuLstFilesRight->popup(globalPosition);
}

void frmAnalyzer::menuLstFilesRightCopy_Click() {
    const auto file = SelectedFile();
    if (!file) return;
    ClipPath = file->path;
    ClipName = file->name;
}

void frmAnalyzer::menuLstFilesRightPaste_Click() {
    const auto remembered = SelectedFile();
    const ListedFile copied{ClipPath, ClipName};
    const auto error = PasteFile(main_.GetServices().files, copied, selectedFolders_);
    ListFolder();
    const auto row = remembered ? std::ranges::find(listed_, *remembered) : listed_.end();
    if (row != listed_.end()) {
        const QSignalBlocker quiet(ui_->lstFiles);
        ui_->lstFiles->setCurrentRow(static_cast<int>(row - listed_.begin()),
                                     QItemSelectionModel::ClearAndSelect);
    }
    main_.ShowOutcome(OutcomeText(
        ToQString(copied.name) + (error ? QStringLiteral(" was not pasted") : QStringLiteral(" is pasted"))));
    if (error == std::errc::file_exists)
        ShowMessage(this, QStringLiteral("File already exists."), QStringLiteral("File exists"),
                    QMessageBox::Warning);
    else if (error)
        ShowError(this, WithPath(QStringLiteral("The file could not be pasted."), copied.path, error));
}

void frmAnalyzer::menuLstFilesRightRemove_Click() {
    const auto file = SelectedFile();
    if (!file) return;
    const auto error = RemoveListedFile(main_.GetServices().files, *file);
    ListFolder();
    main_.ShowOutcome(OutcomeText(ToQString(file->name) + (error ? QStringLiteral(" could not be removed")
                                                                 : QStringLiteral(" is removed")))
                          .Note(ToQString(file->path)));
    if (error) ShowError(this, WithPath(QStringLiteral("The file could not be removed."), file->path, error));
}

} // namespace quillbay
