#pragma once

#include <QIcon>
#include <QString>
#include <QStyle>
#include <QTreeWidget>

namespace quillbay {

class FileSystem;

/// A folder list: the drives, the folders on the way to the current one, and its subfolders (hidden ones too,
/// as Wine prefixes are). Double click or Enter goes into a folder. It lists nothing before it has a path.
class FolderListBox : public QTreeWidget {
    Q_OBJECT
    /// The full path of the current folder with the system's separator, without a final one unless it is a
    /// root; empty at first. A text that is no absolute path of an existing folder changes nothing.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

public:
    explicit FolderListBox(QWidget* parent = nullptr);

    /// Where the folders come from; must be called before the first path is set.
    void SetFileSystem(const FileSystem& files) { files_ = &files; }

    const QString& path() const { return path_; }
    void setPath(const QString& path);
    /// Lists the current folder anew.
    void Refresh();

signals:
    /// Another path was set, or the user chose a folder, also the current one.
    void pathChanged(const QString& path);

protected:
    /// Every folder shown is open and stays so: no arrows.
    void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}

private:
    QTreeWidgetItem* AddFolder(QTreeWidgetItem* parent, const QString& text, const QString& path,
                               const QIcon& icon);
    /// The items of the drives and of every folder on the way; returns that of the path itself.
    QTreeWidgetItem* AddWayTo(const QString& path);
    void AddSubfolders(QTreeWidgetItem& folder);

    // Made once: each icon keeps pictures of its own.
    const QIcon drive_ = style()->standardIcon(QStyle::SP_DriveHDIcon);
    const QIcon share_ = style()->standardIcon(QStyle::SP_DriveNetIcon);
    const QIcon onTheWay_ = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon subfolder_ = style()->standardIcon(QStyle::SP_DirIcon);
    const FileSystem* files_ = nullptr;
    QString path_;
};

} // namespace quillbay
