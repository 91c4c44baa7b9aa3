#include "odf/window/frmAnalyzer.h"

#include "common/Twips.h"
#include "common/window/LoadPicture.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/RowClicks.h"
#include "common/window/ShowMessage.h"
#include "common/window/UpdateLock.h"
#include "library/window/LibraryHost.h"
#include "odf/OdfLines.h"
#include "platform/ShellOpener.h"
#include "platform/SoundPlayer.h"
#include "ui_frmAnalyzer.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace quillbay {

namespace {

/// Where the picture is while it does not fill the window; the files begin as far to the right.
constexpr QRect kPictureBox{TwipsToPixels(4320), TwipsToPixels(3000), TwipsToPixels(4155),
                            TwipsToPixels(2415)};
constexpr int kShortListHeight = TwipsToPixels(2595);
// Larger than the bounds of the picture, so that it cannot be lost outside.
constexpr QSize kMinimumSize{600, 400};

constexpr char kNoFilesRow[] = "(No files found.)";

/// Of a node: the texts from the root down, joined by backslashes.
constexpr int kPathRole = Qt::UserRole;

bool IsPictureName(const QString& name) {
    const QString ending = name.right(4).toLower();
    return ending == QLatin1String(".bmp") || ending == QLatin1String(".jpg") ||
           ending == QLatin1String(".gif");
}

/// Sounds in capitals are for the desktop's own player.
bool IsSoundName(const QString& name) {
    return name.endsWith(QLatin1String(".wav")) && name == name.toLower();
}

QString NodePath(const QTreeWidgetItem& node) { return node.data(0, kPathRole).toString(); }

QTreeWidgetItem* MakeNode(const TreeFolder& folder, const QString& path) {
    auto* node = new QTreeWidgetItem({ToQString(folder.text)});
    node->setData(0, kPathRole, path);
    for (const TreeFolder& child : folder.children)
        node->addChild(MakeNode(child, path + u'\\' + ToQString(child.text)));
    return node;
}

} // namespace

frmAnalyzer::frmAnalyzer(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmAnalyzer>()) {
    ui_->setupUi(this);
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i)
        openingCaptions_[i] = labels[i]->text();
    ui_->TreeViewer->header()->setStretchLastSection(false);
    ui_->TreeViewer->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    ui_->menuLstFilesRight->setDefaultAction(ui_->menuLstFilesRightOpen);
    ui_->picImages->raise();
    HidePicture();
    FitToFont();
    ConnectControls();
}

frmAnalyzer::~frmAnalyzer() = default;

void frmAnalyzer::ConnectControls() {
    connect(&main_.Signals, &LibrarySignals::ModListRebuilt, this, &frmAnalyzer::FollowMainList);
    PicturePreview* picture = ui_->picImages;
    connect(this, &EffectWindow::Closed, picture, &PicturePreview::LeaveFullWindow);
    connect(picture, &PicturePreview::FullWindowChanged, this, &frmAnalyzer::FollowPicture);
    connect(picture, &PicturePreview::MenuRequested, this,
            [this](QPoint at) { ui_->menuPicRight->popup(at); });

    ConnectRowClicks(*ui_->TreeViewer, [this] { TreeViewer_NodeClick(); });
    connect(ui_->TreeViewer, &QTreeWidget::itemDoubleClicked, this, &frmAnalyzer::TreeViewer_DblClick);
    ui_->TreeViewer->installEventFilter(this);

    AnalyzerFileList* list = ui_->lstFiles;
    connect(list, &AnalyzerFileList::RowClicked, this, &frmAnalyzer::lstFiles_Click);
    connect(list, &AnalyzerFileList::OpenRequested, this, &frmAnalyzer::lstFiles_DblClick);
    connect(list, &AnalyzerFileList::MouseDown, this, &frmAnalyzer::lstFiles_MouseDown);
    connect(list, &AnalyzerFileList::CopyRequested, this, &frmAnalyzer::menuLstFilesRightCopy_Click);
    connect(list, &AnalyzerFileList::RemoveRequested, this, &frmAnalyzer::menuLstFilesRightRemove_Click);
    connect(list, &AnalyzerFileList::PasteRequested, this, [this] {
        if (CanPaste()) menuLstFilesRightPaste_Click();
    });

    const auto onClick = [](QAction* item, auto* receiver, auto handler) {
        connect(item, &QAction::triggered, receiver, handler);
    };
    onClick(ui_->menuLstFilesRightOpen, this, &frmAnalyzer::lstFiles_DblClick);
    onClick(ui_->menuLstFilesRightRemove, this, &frmAnalyzer::menuLstFilesRightRemove_Click);
    onClick(ui_->menuLstFilesRightCopy, this, &frmAnalyzer::menuLstFilesRightCopy_Click);
    onClick(ui_->menuLstFilesRightPaste, this, &frmAnalyzer::menuLstFilesRightPaste_Click);
    onClick(ui_->menuPicRightCopy, picture, &PicturePreview::CopyToClipboard);
    onClick(ui_->menuPicRightFullWindow, picture, &PicturePreview::Click);
    onClick(ui_->menuPicRightCenter, picture, &PicturePreview::Center);
}

std::array<QLabel*, kUnitKeys.size()> frmAnalyzer::StatisticsLabels() const {
    return {ui_->lblOdfUnitName,  ui_->lblOdfRace,          ui_->lblOdfBuildTime, ui_->lblOdfOfficerCost,
            ui_->lblOdfCrewCost,  ui_->lblOdfDilithiumCost, ui_->lblOdfMetalCost, ui_->lblOdfLatinumCost,
            ui_->lblOdfMaxHealth, ui_->lblOdfShieldRate};
}

void frmAnalyzer::Form_Load() {
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->setText(openingCaptions_[i]);
    BuildModTree();
}

void frmAnalyzer::FitToFont() {
    setMinimumSize(AtFont(kMinimumSize.width()), AtFont(kMinimumSize.height()));
    ui_->TreeViewer->setFixedWidth(AtFont(kPictureBox.left()) - ui_->layWindow->contentsMargins().left() -
                                   ui_->layColumns->spacing());
    // A value may hold line feeds.
    for (QLabel* label : StatisticsLabels())
        label->setFixedHeight(label->fontMetrics().height());
    if (!ui_->areaBelowFiles->isHidden()) ShortenList();
    ui_->picImages->SetBox({AtFont(kPictureBox.left()), AtFont(kPictureBox.top()),
                            AtFont(kPictureBox.width()), AtFont(kPictureBox.height())});
}

void frmAnalyzer::BuildModTree() {
    FillTree(false);
    EmptyFileList();
}

void frmAnalyzer::FollowMainList() {
    if (isVisible() && !FillTree(nodeShown_)) EmptyFileList();
}

bool frmAnalyzer::FillTree(bool keepSelection) {
    QTreeWidget& viewer = *ui_->TreeViewer;
    const QSignalBlocker quiet(viewer);
    const UpdateLock lock(viewer);
    TreeFolder tree = ReadModTree(main_.GetServices().files, main_.ProgramDirectory, main_.ModRows());
    if (tree == tree_) {
        if (!keepSelection) viewer.setCurrentItem(nullptr);
        return keepSelection;
    }
    tree_ = std::move(tree);
    const QSet<QString> expanded = ExpandedNodes();
    const int scrolled = viewer.verticalScrollBar()->value();
    const QString selectedPath = keepSelection ? ToQString(SelectedNodePath) : QString();

    viewer.clear();
    viewer.addTopLevelItem(MakeNode(tree_, ToQString(tree_.text)));
    QTreeWidgetItem* selected = nullptr;
    for (QTreeWidgetItemIterator node(&viewer); *node; ++node) {
        const QString path = NodePath(**node);
        if (expanded.contains(path)) (*node)->setExpanded(true);
        if (path == selectedPath) selected = *node;
    }
    if (selected) {
        // Scrolling to the node would expand the folders above it.
        viewer.setAutoScroll(false);
        viewer.setCurrentItem(selected);
        viewer.setAutoScroll(true);
        selectedFolders_ = FolderOf(*selected).folders;
    }
    viewer.doItemsLayout();
    viewer.verticalScrollBar()->setValue(scrolled);
    return selected;
}

QSet<QString> frmAnalyzer::ExpandedNodes() const {
    if (ui_->TreeViewer->topLevelItemCount() == 0) return {QStringLiteral("Mods")};
    QSet<QString> expanded;
    for (QTreeWidgetItemIterator node(ui_->TreeViewer); *node; ++node)
        if ((*node)->isExpanded()) expanded += NodePath(**node);
    return expanded;
}

const TreeFolder& frmAnalyzer::FolderOf(QTreeWidgetItem& node) const {
    QTreeWidgetItem* parent = node.parent();
    if (!parent) return tree_;
    return FolderOf(*parent).children[static_cast<std::size_t>(parent->indexOfChild(&node))];
}

void frmAnalyzer::TreeViewer_NodeClick() {
    const auto selected = ui_->TreeViewer->selectedItems();
    if (selected.isEmpty()) return;
    const TreeFolder& folder = FolderOf(*selected.front());
    SelectedNodeText = folder.text;
    SelectedNodePath = FromQString(NodePath(*selected.front()));
    selectedFolders_ = folder.folders;
    ListFolder();
}

void frmAnalyzer::TreeViewer_DblClick() {
    if (!selectedFolders_.empty()) Ignore(main_.GetServices().shell.OpenWithShell(selectedFolders_.front()));
}

void frmAnalyzer::EmptyFileList() {
    ui_->picImages->LeaveFullWindow();
    HidePicture();
    const QSignalBlocker quiet(ui_->lstFiles);
    nodeShown_ = false;
    listed_.clear();
    ui_->lstFiles->clear();
    ShowListAtFullHeight();
}

void frmAnalyzer::ListFolder() {
    HidePicture();
    ShowListAtFullHeight();
    const QSignalBlocker quiet(ui_->lstFiles);
    nodeShown_ = true;
    listed_ = ListFiles(main_.GetServices().files, selectedFolders_);
    QStringList texts;
    for (const ListedFile& file : listed_)
        texts += ToQString(file.name);
    if (texts.isEmpty()) texts += QLatin1String(kNoFilesRow);
    ui_->lstFiles->clear();
    ui_->lstFiles->addItems(texts);
}

void frmAnalyzer::SelectFile(const std::optional<ListedFile>& file) {
    const auto row = file ? std::ranges::find(listed_, *file) : listed_.end();
    if (row == listed_.end()) return;
    const QSignalBlocker quiet(ui_->lstFiles);
    ui_->lstFiles->setCurrentRow(static_cast<int>(row - listed_.begin()),
                                 QItemSelectionModel::ClearAndSelect);
}

void frmAnalyzer::ShowListAtFullHeight() {
    ui_->areaBelowFiles->hide();
    ui_->lstFiles->setMinimumHeight(0);
    ui_->lstFiles->setMaximumHeight(QWIDGETSIZE_MAX);
    layout()->activate();
}

void frmAnalyzer::ShortenList() {
    ui_->lstFiles->setFixedHeight(AtFont(kShortListHeight));
    ui_->areaBelowFiles->show();
    layout()->activate();
}

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
    return nodeShown_ && !ClipPath.empty() && IsStillThere(main_.GetServices().files, {ClipPath, ClipName});
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
    SelectFile(remembered);
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
    const auto selected = error ? file : FileBeside(listed_, *file);
    ListFolder();
    SelectFile(selected);
    main_.ShowOutcome(OutcomeText(ToQString(file->name) + (error ? QStringLiteral(" could not be removed")
                                                                 : QStringLiteral(" is removed")))
                          .Note(ShownPath(file->path)));
    if (error) ShowError(this, WithPath(QStringLiteral("The file could not be removed."), file->path, error));
}

void frmAnalyzer::HidePicture() {
    ui_->picImages->hide();
    ui_->lblInvalidPic->hide();
}

void frmAnalyzer::PreviewPicture(const std::string& file) {
    const QImage image = LoadPicture(main_.GetServices().files, file, {"bmp", "jpeg", "gif"});
    ui_->picImages->Show(image);
    ui_->lblInvalidPic->setVisible(image.isNull());
    ShortenList();
}

void frmAnalyzer::FollowPicture(bool fillsWindow) {
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (fillsWindow) SavedTooltips[i] = labels[i]->toolTip();
        labels[i]->setToolTip(fillsWindow ? QString() : SavedTooltips[i]);
    }
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui_->TreeViewer, ui_->lstFiles, ui_->lblSelectFolder})
        control->setVisible(!fillsWindow);
    if (!fillsWindow) ui_->lstFiles->setFocus();
    ui_->menuPicRightFullWindow->setText(fillsWindow ? QStringLiteral("Normal &window")
                                                     : QStringLiteral("Full &window"));
    ui_->menuPicRightCenter->setEnabled(fillsWindow);
}

bool frmAnalyzer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return EffectWindow::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
    if (!key.isAutoRepeat()) TreeViewer_DblClick();
    return true;
}

void frmAnalyzer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && ui_->picImages->FillsWindow())
        ui_->picImages->LeaveFullWindow();
    else
        EffectWindow::keyPressEvent(event);
}

void frmAnalyzer::changeEvent(QEvent* event) {
    EffectWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        // The children take the new font after their window.
        QMetaObject::invokeMethod(this, &frmAnalyzer::FitToFont, Qt::QueuedConnection);
    }
}

} // namespace quillbay
