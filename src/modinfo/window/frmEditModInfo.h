#pragma once

#include "effects/window/EffectWindow.h"
#include "library/ModRows.h"
#include "modinfo/ModInfo.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QLabel;

namespace quillbay {

namespace Ui {
class frmEditModInfo;
}

class DetailsPanel;
class LibraryHost;
struct ModInfoResult;

/// Writes the ModInfo.txt of a mod from five text boxes and previews how the details panel will show it. It
/// works on the mod that the main window's list has selected, unless none is chosen here.
class frmEditModInfo : public EffectWindow {
    Q_OBJECT

public:
    /// `panel` is the main window's.
    frmEditModInfo(LibraryHost& main, const DetailsPanel& panel, QAction* menuItem);
    ~frmEditModInfo() override;

protected:
    void Form_Load() override;
    void Form_OpenedAgain() override;

private:
    struct ValueBox {
        std::string ModInfoCaptions::*value;
        QLabel* preview;
        /// Line ends as the file gets them.
        std::function<std::string()> text;
        std::function<void(const std::string&)> setText;
    };

    template <typename Box>
    void AddBox(Box& box, QLabel& preview, std::string ModInfoCaptions::*value);

    void cboMod_Click();
    void cmdMakeFile_Click();
    void cmdClear_Click();

    /// The main list was rebuilt: the combo box offers its rows and keeps its choice by mod path.
    void FollowModList();
    /// The details panel was filled: other captions replace the texts only when another mod was selected.
    void FollowDetails();
    void FillCombo();
    void Choose(const ModPath& mod);
    /// The combo box's tool tip tells equally named addons apart; blank boxes say why they are.
    void NamePlace();
    ModPath ChosenMod() const;
    /// The main list's selection; empty for none.
    ModPath SelectedMod() const;

    ModInfoCaptions Texts() const;
    void FillBoxes(const ModInfoCaptions& captions);
    void ShowPreview(const ValueBox& box);
    void ShowPreviews();
    void Report(const ModInfoResult& result);

    LibraryHost& main_;
    const DetailsPanel& panel_;
    std::unique_ptr<Ui::frmEditModInfo> ui_;
    std::vector<ValueBox> boxes_;
    ModPath followed_;       ///< the main list's selection when it was looked at last
    ModInfoCaptions filled_; ///< what the boxes held before the user changed anything
};

} // namespace quillbay
