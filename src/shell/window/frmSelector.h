#pragma once

#include "library/window/LibraryHost.h"
#include "platform/Registry.h"

#include <QMainWindow>

#include <memory>

class QTimer;

namespace quillbay {

namespace Ui {
class frmSelector;
}

class DetailsPanel;

/// The main window. It lives for the whole run; the other windows are opened from its menus and know it as
/// their LibraryHost only. What its commands do is done by classes of the folders that they are about.
class frmSelector : public QMainWindow, public LibraryHost {
    Q_OBJECT

public:
    /// Makes the window without showing it.
    explicit frmSelector(const Services& services);
    ~frmSelector() override;

    /// Shows the window and does everything that start-up does; steps that fail are skipped. False when the
    /// program ended meanwhile.
    bool Start();

    /// Ask the user, then install or uninstall the selected mod.
    void InstallMod();
    void UninstallMod();
    /// Asks the user, then deletes the selected mod from the disk.
    void RemoveMod();
    /// The Wine prefix whose registry named the game directory; empty when the user chose the directory.
    std::string GamePrefix() const;
    const DetailsPanel& Details() const;

    void RefreshModList(const RefreshOptions& options) override;
    const std::vector<ModRow>& ModRows() const override;
    std::optional<ModRow> SelectedMod() const override;
    bool SelectMod(const ModPath& path) override;
    void ShowModDetails() override;
    std::optional<std::size_t> ShownFileCount() const override;
    void ShowOutcome(const OutcomeText& outcome) override;
    void UninstallAll(QWidget& asking) override;
    void SetMainMenusEnabled(bool enabled) override;
    bool MayEnd() override;
    void EndProgram() override;
    bool AutoRefresh() const override;
    void SetAutoRefresh(bool on) override;
    ClosingSwitches SmoothClosing() const override;
    bool SmoothCloseMainWindowOnly() const override;
    QWidget& MainWindow() override { return *this; }

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Enter presses the button that has the focus.
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// What the window consists of beside its controls.
    struct Parts;

    void ConnectControls();
    void ConnectCommands();
    void FitToFont();
    void ShowPictureLayout(bool withPicture);
    void ReadSettings();
    void TellTakenPrefix();
    void AskForGameDirectory();

    void lstMods_Click();
    void lstMods_MouseDown(QPoint globalPosition);
    void timRefreshModList_Timer();
    void timClickMod_Timer();

    std::unique_ptr<Ui::frmSelector> ui_;
    std::unique_ptr<Parts> parts_;
    RegisteredFolder registeredGame_;
    QTimer* timRefreshModList_;
    QTimer* timClickMod_;
    int baseHeight_ = 0; ///< of the layout without picture, in pixels
};

} // namespace quillbay
