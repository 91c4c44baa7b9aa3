#include "odf/window/frmAnalyzer.h"

#include "common/Twips.h"
#include "common/window/QtText.h"
#include "common/window/UpdateLock.h"
#include "library/window/LibraryHost.h"
#include "platform/ShellOpener.h"
#include "ui_frmAnalyzer.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

namespace quillbay {

namespace {

constexpr int kFilesLeft = TwipsToPixels(4320);
constexpr int kShortListHeight = TwipsToPixels(2595);
// Larger than the bounds of the picture, so that it cannot be lost outside.
constexpr QSize kMinimumSize{600, 400};

constexpr char kNoFilesRow[] = "(No files found.)";

/// Of a node: the texts from the root down, joined by backslashes.
constexpr int kPathRole = Qt::UserRole;

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
    connect(this, &EffectWindow::Closed, this, &frmAnalyzer::ShowNormalWindow);

    connect(ui_->TreeViewer, &QTreeWidget::itemSelectionChanged, this, [this] {
        TreeViewer_NodeClick();
        nodeJustClicked_ = true;
        QMetaObject::invokeMethod(
            this, [this] { nodeJustClicked_ = false; }, Qt::QueuedConnection);
    });
    connect(ui_->TreeViewer, &QTreeWidget::itemPressed, this, [this] {
        if (!nodeJustClicked_) TreeViewer_NodeClick();
    });
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

    const auto onClick = [this](QAction* item, auto handler) {
        connect(item, &QAction::triggered, this, handler);
    };
    onClick(ui_->menuLstFilesRightOpen, &frmAnalyzer::lstFiles_DblClick);
    onClick(ui_->menuLstFilesRightRemove, &frmAnalyzer::menuLstFilesRightRemove_Click);
    onClick(ui_->menuLstFilesRightCopy, &frmAnalyzer::menuLstFilesRightCopy_Click);
    onClick(ui_->menuLstFilesRightPaste, &frmAnalyzer::menuLstFilesRightPaste_Click);
    onClick(ui_->menuPicRightCopy, &frmAnalyzer::menuPicRightCopy_Click);
    onClick(ui_->menuPicRightFullWindow, &frmAnalyzer::picImages_Click);
    onClick(ui_->menuPicRightCenter, &frmAnalyzer::menuPicRightCenter_Click);
    ui_->picImages->installEventFilter(this);
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
    ui_->TreeViewer->setFixedWidth(AtFont(kFilesLeft) - ui_->layWindow->contentsMargins().left() -
                                   ui_->layColumns->spacing());
    // A value may hold line feeds.
    for (QLabel* label : StatisticsLabels())
        label->setFixedHeight(label->fontMetrics().height());
    if (!ui_->areaBelowFiles->isHidden()) ShortenList();
    if (!FullWindow) PlacePictureBox();
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
    const QSet<QString> expanded = ExpandedNodes();
    const int scrolled = viewer.verticalScrollBar()->value();
    const QString selectedPath = keepSelection ? ToQString(SelectedNodePath) : QString();

    tree_ = ReadModTree(main_.GetServices().files, main_.ProgramDirectory, main_.ModRows());
    viewer.clear();
    viewer.addTopLevelItem(MakeNode(tree_, ToQString(tree_.text)));
    QTreeWidgetItem* selected = nullptr;
    for (QTreeWidgetItemIterator node(&viewer); *node; ++node) {
        const QString path = NodePath(**node);
        if (expanded.contains(path)) (*node)->setExpanded(true);
        if (path == selectedPath) selected = *node;
    }
    if (selected) {
        // Scrolling to it would expand what is not.
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
    ShowNormalWindow();
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

bool frmAnalyzer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->picImages) return PictureEvent(*event);
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
    if (!key.isAutoRepeat()) TreeViewer_DblClick();
    return true;
}

void frmAnalyzer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && FullWindow)
        ShowNormalWindow();
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
