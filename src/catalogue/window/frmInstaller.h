#pragma once

#include "catalogue/LooseFileSorter.h"
#include "effects/window/EffectWindow.h"

#include <memory>
#include <optional>
#include <string>

class QListWidgetItem;

namespace quillbay {

namespace Ui {
class frmInstaller;
}

class LibraryHost;

/// Sorts loose files of a mod into its folders: the user chooses the types and, within a type, the files.
class frmInstaller : public EffectWindow {
    Q_OBJECT

public:
    frmInstaller(LibraryHost& main, QAction* menuItem);
    ~frmInstaller() override;

protected:
    void Form_Load() override;

private:
    void lstChooser_Click();
    void lstChooser_DblClick();
    void lstFolders_Click();
    void lstFolders_ItemCheck(const QListWidgetItem& row);
    void lstFiles_ItemCheck(const QListWidgetItem& row);
    void cmdInstall_Click();
    void cboBox_Click();

    void ConnectChooser();
    void FillChooser();
    /// The folder of the selected mod; empty without one.
    std::string SelectedFolder() const;
    /// Lists the loose files of a mod's folder anew, all of them flagged and every type checked.
    void Choose(const std::string& folder);
    void ShowTypes();
    /// The row of the type whose files are shown; null when none is.
    QListWidgetItem* ShownRow() const;
    void CheckAllTypes(Qt::CheckState state);
    void SetButtons();
    void SetListsEnabled(bool enabled);

    LibraryHost& main_;
    std::unique_ptr<Ui::frmInstaller> ui_;
    LooseFiles loose_;
    std::optional<std::size_t> shownType_; ///< position in LooseFileTypes
};

} // namespace quillbay
