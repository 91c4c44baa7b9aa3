#pragma once

#include "catalogue/FinderActions.h"
#include "catalogue/GameScan.h"
#include "effects/window/EffectWindow.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace quillbay {

namespace Ui {
class frmFindModifiedFiles;
}

class LibraryHost;

/// Compares the game directory with FileList.txt, lists new and modified files, and copies, moves or deletes
/// them.
class frmFindModifiedFiles : public EffectWindow {
    Q_OBJECT

public:
    frmFindModifiedFiles(LibraryHost& main, QAction* menuItem);
    ~frmFindModifiedFiles() override;

protected:
    void Form_Load() override;
    /// Enter presses the button that has the focus, else the default one; Escape cancels a running scan.
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The scan and the list
    void ShowTotals();
    void cmdStart_Click();
    /// FileList.txt; none after a message that it cannot be read.
    std::optional<FileCatalogue> LoadCatalogue();
    /// False when the scan was overtaken by the end of the window or of the program: nothing may be touched
    /// any more.
    bool RunScan();
    /// Adds what was found since and brings labels and bar up to date.
    void ShowScanProgress();
    void ShowCounts();
    void FinishScan();
    /// Lists what was found of the kinds that the view boxes say.
    void Redolist();

    // Layouts
    void MakeDefault(QPushButton& button);
    /// Gives the layouts what they have at once, not with later events.
    void LayOut();
    /// Resizes the window, unless it fills the screen.
    void ResizeTo(QSize wanted);
    void ShowCompactLayout();
    void ShowScanLayout();
    void ShowResultLayout();

    // The file actions
    void txtPath_Change();
    void lstList_ItemCheck();
    void lblInvert_Click();
    void cmdBrowse_Click();
    void cmdCopy_Click();
    void cmdMove_Click();
    void cmdDelete_Click();
    void ApplyButtonRule();
    /// What the tool tips of the greyed actions say; empty when they are allowed.
    QString WhyNoAction() const;
    void CopyOrMove(FileAction action);
    /// Compares the files that Move and Delete would take away with FileList.txt anew; none after a message
    /// that it cannot be read.
    std::optional<FileActionPlan> Plan(FileAction action, const std::string& destination,
                                       const std::vector<std::string>& names);
    FileActionResult Run(const FileActionPlan& plan);
    void SetFilesMovedOrDeleted();
    /// At the main window's foot, and in a box what went wrong.
    void Report(const FileActionPlan& plan, const FileActionResult& result);

    LibraryHost& main_;
    std::unique_ptr<Ui::frmFindModifiedFiles> ui_;

    // All of this is new with each opening.
    std::string gameDirectory_;
    std::string programDirectory_;
    std::size_t fileCount_ = 0; ///< of the game, when the window opened
    std::unique_ptr<GameScan> scan_;
    FoundFiles found_;      ///< by the last scan, or so far
    bool scanning_ = false; ///< neither another scan nor a file action may start
    bool cancelRequested_ = false;
    bool filesMovedOrDeleted_ = false;
    bool pathIsFolder_ = false; ///< the text of the path box names an existing folder
    bool itemChecked_ = false;

    std::size_t shownNew_ = 0; ///< found files that the running scan has brought into the list
    std::size_t shownModified_ = 0;
    int heightAdded_ = 0; ///< to the window by the scan layout, in pixels
};

} // namespace quillbay
