#pragma once

#include "effects/window/EffectWindow.h"
#include "library/GameDirectory.h"

#include <memory>
#include <string>

namespace quillbay {

namespace Ui {
class frmChangeT2Dir;
}

struct Services;

/// The chooser of the game directory.
class frmChangeT2Dir : public EffectWindow {
    Q_OBJECT

public:
    /// `gameDirectory` is read at each opening and written when the user confirms another one.
    frmChangeT2Dir(EffectHost& host, QAction* menuItem, const Services& services, std::string& gameDirectory);
    ~frmChangeT2Dir() override;

    /// Opens the window modally and returns when it is closed, or when the program ends: the caller then
    /// goes on only while the host's phase says so.
    void OpenModal();

signals:
    /// Cancel was chosen while no game directory is known: the program is to end at once.
    void QuitRequested();

protected:
    void Form_Load() override;
    void Form_Shown() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void cmdOK_Click();
    void cmdApply_Click();
    void cmdCancel_Click();
    void dirListBox_Change();
    void txtDir_Change();

    /// Stores the typed directory when it is acceptable, and says how it was found; beeps when it has no
    /// name.
    CandidateState StoreCandidate();
    void SearchGame();
    void ShowFolder(const std::string& folder);
    bool WaitUntilVisible();
    bool KnowsNoGame() const { return gameDirectory_ == kGameNotFound; }

    const Services& services_;
    std::string& gameDirectory_;
    std::unique_ptr<Ui::frmChangeT2Dir> ui_;
    bool openModal_ = false;
};

} // namespace quillbay
