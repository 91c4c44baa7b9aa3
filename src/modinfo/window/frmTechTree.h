#pragma once

#include "effects/window/EffectWindow.h"
#include "library/ModRows.h"

#include <memory>

namespace quillbay {

namespace Ui {
class frmTechTree;
}

class LibraryHost;

/// The tech tree options that a mod brings, and those it does not.
class frmTechTree : public EffectWindow {
    Q_OBJECT

public:
    frmTechTree(LibraryHost& main, QAction* menuItem);
    ~frmTechTree() override;

protected:
    /// Takes over the rows of the main list as they are now.
    void Form_Load() override;

private:
    void lstMods_Click();

    LibraryHost& main_;
    std::unique_ptr<Ui::frmTechTree> ui_;
    std::vector<ModRow> rows_; ///< by row of the list
};

} // namespace quillbay
