#pragma once

#include "effects/window/EffectWindow.h"
#include "odf/ListedFile.h"
#include "odf/ModTree.h"
#include "odf/UnitStatistics.h"

#include <QSet>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

class QKeyEvent;
class QLabel;
class QTreeWidgetItem;

namespace quillbay {

namespace Ui {
class frmAnalyzer;
}

class LibraryHost;

/// The mod analyzer: the known folders of every mod as a tree, the files of one folder, what a unit's ODF
/// file says, pictures, and commands for files.
class frmAnalyzer : public EffectWindow {
    Q_OBJECT

public:
    frmAnalyzer(LibraryHost& main, QAction* menuItem);
    ~frmAnalyzer() override;

    // What the window keeps, also while it is closed; closing it leaves the full-window mode only.
    std::string SelectedNodeText; ///< of the tree node that was clicked last
    std::string SelectedNodePath; ///< its texts from the root down, joined by backslashes; empty at first
    std::string ClipPath;         ///< the file that was copied last; empty at first
    std::string ClipName;
    std::array<QString, kUnitKeys.size()>
        SavedTooltips; ///< of the statistics, while the picture fills the window

protected:
    void Form_Load() override;
    void Form_OpenedAgain() override { BuildModTree(); }
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ConnectControls();
    void FitToFont();
    std::array<QLabel*, kUnitKeys.size()> StatisticsLabels() const;

    // The tree
    void BuildModTree();
    /// Follows a rebuild of the main list.
    void FollowMainList();
    /// Reads the tree anew, and shows it when it has changed; expanded nodes and the scroll position stay,
    /// the selection only if wanted. False when no node is selected now.
    bool FillTree(bool keepSelection);
    QSet<QString> ExpandedNodes() const;
    const TreeFolder& FolderOf(QTreeWidgetItem& node) const;
    void TreeViewer_NodeClick();
    void TreeViewer_DblClick();

    // The file list
    void EmptyFileList();
    /// Shows the folder of the node that was clicked last, as it is now.
    void ListFolder();
    /// Selects the row of the file, if there is one, without showing what is in it.
    void SelectFile(const std::optional<ListedFile>& file);
    /// The list is as high as the tree, or lets show what lies below it.
    void ShowListAtFullHeight();
    void ShortenList();
    /// The file of the selected row; none for the row that says that there are no files.
    std::optional<ListedFile> SelectedFile() const;
    void lstFiles_Click();
    void ShowStatistics(const std::string& file);

    // File commands
    void lstFiles_DblClick();
    void lstFiles_MouseDown(Qt::MouseButton button, QPoint globalPosition);
    /// Into a folder that is shown.
    bool CanPaste() const;
    void menuLstFilesRightCopy_Click();
    void menuLstFilesRightPaste_Click();
    void menuLstFilesRightRemove_Click();

    // The picture
    void HidePicture();
    void PreviewPicture(const std::string& file);
    /// The picture fills the window now, or no longer does.
    void FollowPicture(bool fillsWindow);

    LibraryHost& main_;
    std::unique_ptr<Ui::frmAnalyzer> ui_;
    std::array<QString, kUnitKeys.size()> openingCaptions_;
    TreeFolder tree_;
    std::vector<std::string> selectedFolders_; ///< of the node that was clicked last
    bool nodeShown_ = false;                   ///< the list shows that node's folder
    std::vector<ListedFile> listed_;           ///< the rows of the list
};

} // namespace quillbay
