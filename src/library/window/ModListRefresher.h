#pragma once

#include "library/ModRows.h"

#include <vector>

class QAction;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace quillbay {

class FileSystem;
class LibraryHost;
class ModListView;
struct RefreshOptions;

/// The main window's controls that follow the mods folder and the game's.
struct ModListControls {
    ModListView& mods;
    QListWidget& sortItems; ///< hidden: the rows that the automatic refresh has read
    QLabel& gameFiles;
    QPushButton& refresh;
    QAction& refreshItem;
    QPushButton& install;
    QAction& installItem;
    QPushButton& uninstall;
    QAction& uninstallItem;
    QProgressBar& progress;
};

/// Brings the mod list and the count of the game's files to the state of the disk.
class ModListRefresher {
public:
    ModListRefresher(LibraryHost& main, const ModListControls& controls);

    void RefreshModList(const RefreshOptions& options);
    /// The automatic refresh: rebuilds the list when the disk has other rows than it.
    void FollowDisk();
    /// What the install and uninstall buttons allow for the selected row; looks at the disk.
    void SetButtons();
    /// Counts the game's files and lets pending events run meanwhile; breaks off when the program ends.
    void CountAtStart();
    void ShowNoGame();

private:
    void SetButtons(bool isInstalled);
    /// In the list, and for the selected one of them by the buttons.
    void ShowRows(const std::vector<ModRow>& rows);
    void CountGameFiles();

    LibraryHost& main_;
    const ModListControls controls_;
    FileSystem& files_;
};

} // namespace quillbay
