#pragma once

#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"
#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <filesystem>
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
    std::uintmax_t names = 1; ///< hard links

    friend bool operator==(const FileState&, const FileState&) = default;
};
using TreeState = std::map<std::string, FileState>;

/// The paths in which two trees differ, one a line; empty when they are equal.
std::string Differences(const TreeState& before, const TreeState& after);

/// A game and a library in a temporary folder.
class InstallLab {
public:
    InstallLab();

    /// `path` is relative to the lab, with `/`: "game/odf/ships/a.odf", "mods/One/odf/ships/a.odf". Every
    /// file gets a modification time of its own, with a fraction of a second.
    void Put(std::string_view path, std::string_view bytes);
    void SetReadOnly(std::string_view path);
    void Remove(std::string_view path);
    std::filesystem::path Native(std::string_view path) const;

    ModJob Job(std::string_view mod) const;
    bool Installed(std::string_view mod) const;
    InstallResult Install(std::string_view mod) { return Install(*files_, mod); }
    InstallResult Install(FileSystem& files, std::string_view mod);
    UninstallResult Uninstall(std::string_view mod) { return Uninstall(*files_, mod); }
    UninstallResult Uninstall(FileSystem& files, std::string_view mod);

    /// Every file below a folder of the lab, by its path there; folders themselves do not count.
    TreeState State(std::string_view folder) const;
    FileSystem& Files() { return *files_; }

private:
    test::TempFolder temp_;
    std::filesystem::path root_;
    std::unique_ptr<FileSystem> files_;
    int filesMade_ = 0;
};

} // namespace quillbay
