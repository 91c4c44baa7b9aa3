#include "common/window/FolderListBox.h"

#include "common/window/QtText.h"
#include "platform/FileSystem.h"

#include <QDir>
#include <QHeaderView>
#include <QSignalBlocker>

namespace quillbay {

namespace {

constexpr int kPathRole = Qt::UserRole;
constexpr QChar kSlash = u'/';

/// With `/` inside, no final one but that of a root, no `.` and `..`.
QString CleanPath(QString path) {
    path = QDir::cleanPath(path.replace(u'\\', kSlash));
    if (path.size() == 2 && path[1] == u':') path += kSlash;
    return path;
}

} // namespace

FolderListBox::FolderListBox(QWidget* parent) : QTreeWidget(parent) {
    setColumnCount(1);
    header()->hide();
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setIndentation(style()->pixelMetric(QStyle::PM_SmallIconSize) * 3 / 4);
    // Queued: going into a folder replaces the rows while the view still handles the click on one.
    connect(
        this, &QTreeWidget::itemActivated, this,
        [this] {
            const QTreeWidgetItem* item = currentItem();
            if (!item) return;
            const QString path = item->data(0, kPathRole).toString();
            if (path == CleanPath(path_))
                emit pathChanged(path_); // though it is no other one
            else
                setPath(path);
        },
        Qt::QueuedConnection);
}

void FolderListBox::setPath(const QString& path) {
    const QString clean = CleanPath(path);
    if (!files_ || !QDir::isAbsolutePath(clean)) return;
    const auto found = files_->Stat(FromQString(clean));
    if (!found || found->kind != EntryKind::Folder) return;
    const QString native = QDir::toNativeSeparators(clean);
    const bool changed = native != path_;
    path_ = native;
    Refresh();
    if (changed) emit pathChanged(path_);
}

void FolderListBox::Refresh() {
    if (!files_ || path_.isEmpty()) return;
    const QSignalBlocker blocker(this);
    setUpdatesEnabled(false);
    clear();
    QTreeWidgetItem* folder = AddWayTo(CleanPath(path_));
    AddSubfolders(*folder);
    expandAll();
    setCurrentItem(folder);
    setUpdatesEnabled(true);
    scrollToItem(folder, QAbstractItemView::PositionAtTop);
}

QTreeWidgetItem* FolderListBox::AddFolder(QTreeWidgetItem* parent, const QString& text, const QString& path,
                                          const QIcon& icon) {
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
    item->setText(0, text);
    item->setData(0, kPathRole, path);
    item->setIcon(0, icon);
    return item;
}

QTreeWidgetItem* FolderListBox::AddWayTo(const QString& path) {
    QTreeWidgetItem* item = nullptr;
    qsizetype end = 0;
    for (const QFileInfo& drive : QDir::drives()) {
        const QString root = drive.absolutePath();
        QTreeWidgetItem* driveItem = AddFolder(nullptr, QDir::toNativeSeparators(root), root, drive_);
        if (item || !path.startsWith(root, Qt::CaseInsensitive)) continue;
        item = driveItem;
        end = root.size();
    }
    if (!item) return AddFolder(nullptr, QDir::toNativeSeparators(path), path, share_);

    while (end < path.size()) {
        const qsizetype start = end + (path[end] == kSlash ? 1 : 0);
        end = path.indexOf(kSlash, start);
        if (end < 0) end = path.size();
        item = AddFolder(item, path.mid(start, end - start), path.left(end), onTheWay_);
    }
    return item;
}

void FolderListBox::AddSubfolders(QTreeWidgetItem& folder) {
    const QString path = folder.data(0, kPathRole).toString();
    const auto entries = files_->List(FromQString(path), Detail::Names);
    if (!entries) return;
    QStringList names;
    for (const DirEntry& entry : *entries)
        if (entry.kind == EntryKind::Folder) names += ToQString(entry.name);
    names.sort(Qt::CaseInsensitive);
    const QString base = path.endsWith(kSlash) ? path : path + kSlash;
    for (const QString& name : names)
        AddFolder(&folder, name, base + name, subfolder_);
}

} // namespace quillbay
