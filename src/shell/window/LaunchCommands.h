#pragma once

#include <string>
#include <string_view>

namespace quillbay {

class FileSystem;
class frmSelector;
struct BatchResult;

/// Starts the game and its map editor, and hands folders, files and addresses to the desktop.
class LaunchCommands {
public:
    explicit LaunchCommands(frmSelector& main);

    /// These two end the program once the game or editor is started.
    void LaunchGame();
    void LaunchMapEditor();
    void InstallMapEditor();

    void OpenFolder(const std::string& folder);
    void OpenSelectedFolder();
    void OpenSelectedReadme();
    /// Hands an existing file or folder, or an address, to the desktop.
    void Open(std::string_view target);

private:
    void StartBatchFile(const BatchResult& batch);

    frmSelector& main_;
    FileSystem& files_;
};

} // namespace quillbay
