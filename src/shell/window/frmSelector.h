#pragma once

#include "effects/window/EffectHost.h"
#include "library/ModJob.h"
#include "library/ModRows.h"
#include "modinfo/window/DetailsPanel.h"
#include "platform/Registry.h"
#include "shell/window/Services.h"

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
class MenuWindows;
class OutcomeText;
struct BatchResult;
struct InstallResult;
struct UninstallResult;

/// How RefreshModList does its work.
struct RefreshOptions {
    bool hideProgress = false; ///< the progress bar stays hidden
    bool keepControls = false; ///< captions, pointer and enabled states stay, and so does the file count
    bool skipCount = false;    ///< the game's files are not counted
    bool keepDetails = false;  ///< the details panel is filled later in the same user action
};

/// The main window. It lives for the whole run; the other windows are opened from its menus and read what
/// they share from its public members.
class frmSelector : public QMainWindow, public EffectHost {
    Q_OBJECT

public:
    /// Makes the window without showing it.
    explicit frmSelector(const Services& services);
    ~frmSelector() override;

    /// The game's installation folder, or kGameNotFound.
    std::string GameDirectory;
    /// Without a final separator.
    std::string ProgramDirectory;

    /// Shows the window and does everything that start-up does; steps that fail are skipped. False when the
    /// program ended meanwhile.
    bool Start();
    /// Ends the program at once: no effect runs, no window is asked.
    void EndProgram();

    /// Reads the mods folder and rebuilds the list.
    void RefreshModList(const RefreshOptions& options);
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
    /// Fills the details panel for the selected row.
    void ShowModDetails();

    /// The rows that the list shows; none for the placeholder.
    const std::vector<ModRow>& ModRows() const;
    /// The selected row; for the placeholder its text with an empty path.
    std::optional<ModRow> SelectedMod() const;
    /// Selects the mod's row, as a click on it does. False when the list does not have it.
    bool SelectMod(const ModPath& path);
    /// What the details panel says about the selected mod.
    const ModInfoCaptions& ShownCaptions() const { return details_.ShownCaptions(); }

    /// The look for changes in the mods folder once a second; on at start-up.
    bool AutoRefresh() const;
    void SetAutoRefresh(bool on);
    /// Says at the window's foot what a command has done; its tool tip names the files concerned.
    void ShowOutcome(const OutcomeText& outcome);
    const Services& GetServices() const { return services_; }

    /// The Manager, Mod and Help menus, with their shortcuts.
    void SetMainMenusEnabled(bool enabled);

    ClosingSwitches SmoothClosing() const override;
    bool SmoothCloseMainWindowOnly() const override;
    QWidget& MainWindow() override { return *this; }

signals:
    /// The list was rebuilt, whether its rows changed or not.
    void ModListRebuilt();
    /// The details panel was filled, for the same mod or another one.
    void ModDetailsShown();

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

    Services services_;
    std::unique_ptr<Ui::frmSelector> ui_;
    RegisteredFolder registeredGame_;
    DetailsPanel details_;
    QTimer* timRefreshModList_;
    QTimer* timClickMod_;
    std::unique_ptr<frmChangeT2Dir> chooser_;
    std::unique_ptr<MenuWindows> windows_;
    int baseHeight_ = 0; ///< of the layout without picture, in pixels
};

} // namespace quillbay
