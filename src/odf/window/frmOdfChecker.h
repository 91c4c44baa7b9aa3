#pragma once

#include "common/window/PaintClock.h"
#include "effects/window/EffectWindow.h"
#include "odf/OdfCheckRun.h"

#include <memory>
#include <optional>
#include <string>

class QCheckBox;

namespace quillbay {

namespace Ui {
class frmOdfChecker;
}

class LibraryHost;

/// Checks the ODF files of a folder and lets the user repair each error where it stands.
class frmOdfChecker : public EffectWindow {
    Q_OBJECT

public:
    frmOdfChecker(LibraryHost& main, QAction* menuItem);
    ~frmOdfChecker() override;

    /// Asks when the text was edited.
    bool Form_QueryUnload() override;

protected:
    void Form_Load() override;
    void Form_OpenedAgain() override;
    /// During a run it closes after the current file; with an edited text it asks.
    void closeEvent(QCloseEvent* event) override;

private:
    enum class State { Idle, Running, Stopped, Paused };
    /// A file in the text box, as it was when it was shown or saved last.
    struct ShownOdf {
        std::string text;
        std::string bytes;
    };

    void ConnectControls();
    void dirDirectory_Change();
    void cmdStart_Click();
    void cmdPause_Click() { pauseRequested_ = true; }
    void cmdContinue_Click();
    void cmdIgnore_Click();
    void cboHelp_Click(int topic);
    void UnavailableOption_Click(QCheckBox& option);

    /// Points the folder list at the game's ODF files.
    void ShowGameFolder();
    /// Offers what can be done with the folder: a start, the race check.
    void LookAtFolder();
    void Run();
    OdfCheckOptions Options() const;
    /// Ends the run when the window is to close or the program is closing.
    bool EndIfRequested();
    /// Says here and in the main window what the run has come to, the end of the last folder or not.
    void EndRun(bool isWhole);
    void StopAtError();
    void ShowOdfError(const OdfError& error);
    /// False when the text box cannot show the file, or not without losing a byte.
    bool ShowOdf(const OdfError& error);
    bool IsEdited() const;
    /// True when nothing was edited, or it is written; otherwise a box said why it is not.
    bool SaveText();

    // What is shown in each state
    void ShowState(State state);
    void ShowRunning();
    /// A text of the window's own in the text box.
    void ShowNote(const QString& text);
    void ShowProgress();

    LibraryHost& main_;
    std::unique_ptr<Ui::frmOdfChecker> ui_;
    State state_ = State::Idle;
    std::optional<OdfCheckRun> run_; ///< from Start to the end of the last folder
    std::optional<ShownOdf> shown_;  ///< while the run is stopped and the text box can show the file
    bool pauseRequested_ = false;
    bool closeRequested_ = false; ///< during a run: once the current file is done
    PaintClock paintClock_;
};

} // namespace quillbay
