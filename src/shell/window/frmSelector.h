#pragma once

#include "library/ModJob.h"
#include "library/window/LibraryHost.h"
#include "modinfo/window/DetailsPanel.h"
#include "platform/Registry.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QAction;

namespace quillbay {

namespace Ui {
class frmSelector;
}

class frmChangeT2Dir;
class IntakeCommands;
class MenuWindows;
class OutcomeText;
struct BatchResult;
struct InstallResult;
struct UninstallResult;

/// The main window. It lives for the whole run; the other windows are opened from its menus and know it as
/// their LibraryHost only.
class frmSelector : public QMainWindow, public LibraryHost {
    Q_OBJECT

public:
    /// Makes the window without showing it.
    explicit frmSelector(const Services& services);
    ~frmSelector() override;

    /// Shows the window and does everything that start-up does; steps that fail are skipped. False when the
    /// program ended meanwhile.
    bool Start();
    /// Ends the program at once: no effect runs, no window is asked.
    void EndProgram();

    /// Ask the user, then install or uninstall the selected mod.
    void InstallMod();
    void UninstallMod();
    /// Asks the user, then deletes the selected mod from the disk.
    void RemoveMod();
    /// Asks for a name and makes an empty mod of it.
    void MakeNewModFolder();
    /// Ask the user, then make or remove the game's folders inside the selected mod.
    void MakeModSubfolders();
    void RemoveModSubfolders();
    const DetailsPanel& Details() const { return details_; }

    void RefreshModList(const RefreshOptions& options) override;
    const std::vector<ModRow>& ModRows() const override;
    std::optional<ModRow> SelectedMod() const override;
    bool SelectMod(const ModPath& path) override;
    void ShowModDetails() override;
    void ShowOutcome(const OutcomeText& outcome) override;
    void SetMainMenusEnabled(bool enabled) override;
    bool AutoRefresh() const override;
    void SetAutoRefresh(bool on) override;
    ClosingSwitches SmoothClosing() const override;
    bool SmoothCloseMainWindowOnly() const override;
    QWidget& MainWindow() override { return *this; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Start-up and layout
    void NameSeparators();
    void ConnectControls();
    void ConnectMenus();
    void FitToFont();
    void ShowPictureLayout(bool withPicture);
    void ReadSettings();
    void CountGameFilesAtStart();
    void TellTakenPrefix();
    void AskForGameDirectory();

    // Menus
    void menuSelector_Click();
    /// What the enabled state of a menu item would be if its menu opened now, which a shortcut does not do.
    bool IsEnabledNow(const QAction& item) const;
    void modChangeT2Directory_Click();
    void menuManagerModFilesRecompile_Click();
    void menuModRefreshModList_Click();

    // Launching and opening
    void ConnectOpeners();
    void LaunchGame();
    void LaunchMapEditor();
    void InstallMapEditor();
    void StartBatchFile(const BatchResult& batch);
    /// The Wine prefix whose registry named the game directory; empty when the user chose the directory.
    std::string GamePrefix() const;
    void OpenFolder(const std::string& folder);
    void OpenSelectedFolder();
    void OpenSelectedReadme();
    /// Hands an existing file or folder, or an address, to the desktop.
    void Open(std::string_view target);

    // The mod list
    void lstMods_Click();
    void lstMods_MouseDown(QPoint globalPosition);
    void timRefreshModList_Timer();
    void timClickMod_Timer();
    void SetButtonsFor(const std::optional<ModRow>& row);
    void CountGameFiles(const RefreshOptions& options);

    // Installing and uninstalling
    std::optional<ModJob> JobForSelection(QString& displayName);
    bool ModStillThere(const ModJob& job);
    InstallResult CopyMod(const ModJob& job, const std::function<void()>& onCopying);
    UninstallResult TakeModOut(const ModJob& job, const std::function<void(const QString&)>& setCaption);
    bool CanStart(const QAction& item) const;

    // Housekeeping
    /// The selected mod's folder, if the user answers Yes and it is there then.
    std::optional<std::string> FolderForSubfolders(const QAction& item, const QString& question,
                                                   const QString& title);

    static constexpr char kNoFolderCount[] = "(T2 folder not found)";
    static constexpr int kRefreshEveryMs = 1000;
    static constexpr int kRefreshMinimizedEveryMs = 10'000;

    std::unique_ptr<Ui::frmSelector> ui_;
    RegisteredFolder registeredGame_;
    DetailsPanel details_;
    QTimer* timRefreshModList_;
    QTimer* timClickMod_;
    std::unique_ptr<frmChangeT2Dir> chooser_;
    std::unique_ptr<MenuWindows> windows_;
    std::unique_ptr<IntakeCommands> intake_;
    int baseHeight_ = 0; ///< of the layout without picture, in pixels
};

} // namespace quillbay
