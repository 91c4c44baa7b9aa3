#pragma once

#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"
#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quillbay {

/// All that a player could notice of one file.
struct FileState {
    std::string bytes; ///< of a symbolic link: its text
    bool isLink = false;
    std::filesystem::file_time_type modified;
    std::filesystem::perms permissions{};

    friend bool operator==(const FileState&, const FileState&) = default;
};
using TreeState = std::map<std::string, FileState>;
/// What files hold, by their paths.
using Contents = std::map<std::string, std::string>;

/// The paths in which two trees differ, one a line; empty when they are equal.
std::string Differences(const TreeState& before, const TreeState& after);

/// A game and a library in a temporary folder. Paths are relative to it, with either separator:
/// "game/odf/ships/a.odf", "mods/One/odf/ships/a.odf".
class InstallLab {
public:
    InstallLab();

    /// Every file gets a modification time of its own, with a fraction of a second.
    void Put(const std::string& path, std::string_view bytes);
    /// Files that hold their own paths, as given here: their bytes tell whose they are.
    void Make(std::initializer_list<const char*> paths);
    void SetReadOnly(std::string_view path);
    void Remove(std::string_view path) { std::filesystem::remove_all(Native(path)); }
    std::filesystem::path Native(std::string_view path) const { return test::DiskPath(temp_ / path); }

    ModJob Job(std::string_view mod) const { return {temp_ / "game", temp_ / "mods", {std::string(mod)}}; }
    bool Installed(std::string_view mod) const;
    /// The mod's place in the order of installations; 0 without a record.
    std::int64_t Number(std::string_view mod) const;
    /// What the mod's `Backup` holds beside its record.
    Contents Saved(std::string_view mod) const;
    InstallResult Install(std::string_view mod) { return Install(*files_, mod); }
    InstallResult Install(FileSystem& files, std::string_view mod);
    UninstallResult Uninstall(std::string_view mod) { return Uninstall(*files_, mod); }
    UninstallResult Uninstall(FileSystem& files, std::string_view mod);

    /// Every file below a folder of the lab, by its path there; folders themselves do not count.
    TreeState State(std::string_view folder) const;
    Contents Read(std::string_view folder) const;
    /// Files that have more than one name (hard links), one a line.
    std::string SharedFiles() const;
    FileSystem& Files() { return *files_; }

private:
    test::TempFolder temp_;
    std::unique_ptr<FileSystem> files_ = MakeFileSystem();
    int filesMade_ = 0;
};

} // namespace quillbay
