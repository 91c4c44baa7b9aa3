#pragma once

#include <QString>

#include <optional>
#include <string>

class QAction;
class QListWidget;
class QProgressBar;
class QWidget;

namespace quillbay {

class FileSystem;
class LibraryHost;

/// The main window's controls for the folders of the library.
struct HousekeepingControls {
    QListWidget& mods;
    QAction& removeItem;
    QAction& newFolderItem;
    QAction& makeSubfoldersItem;
    QAction& removeSubfoldersItem;
    QProgressBar& progress;
};

/// The commands that make and remove folders of the library: ask the user, do it, say what was done.
class HousekeepingCommands {
public:
    HousekeepingCommands(LibraryHost& main, const HousekeepingControls& controls);

    /// Deletes the selected mod from the disk.
    void RemoveMod();
    /// Asks for a name and makes an empty mod of it.
    void MakeNewModFolder();
    /// Make or remove the game's folders inside the selected mod.
    void MakeModSubfolders();
    void RemoveModSubfolders();

private:
    /// The selected mod's folder, if the user answers Yes and it is there then.
    std::optional<std::string> FolderForSubfolders(const QAction& item, const QString& question,
                                                   const QString& title);

    LibraryHost& main_;
    const HousekeepingControls controls_;
    FileSystem& files_;
    QWidget* window_;
};

} // namespace quillbay
