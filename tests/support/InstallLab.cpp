#include "support/InstallLab.h"

#include "common/PathText.h"
#include "library/InstalledMods.h"

#include <chrono>
#include <fstream>
#include <iterator>

namespace quillbay {

namespace fs = std::filesystem;

std::string Differences(const TreeState& before, const TreeState& after) {
    std::string text;
    for (const auto& [path, state] : before) {
        const auto found = after.find(path);
        if (found == after.end())
            text += "lost: " + path + "\n";
        else if (found->second.bytes != state.bytes || found->second.isLink != state.isLink)
            text += "other contents: " + path + "\n";
        else if (found->second != state)
            text += "other time, permissions or number of names: " + path + "\n";
    }
    for (const auto& [path, state] : after)
        if (!before.contains(path)) text += "new: " + path + "\n";
    return text;
}

InstallLab::InstallLab() : root_(test::DiskPath(temp_.Path())), files_(MakeFileSystem()) {
    fs::create_directory(root_ / "game");
    fs::create_directory(root_ / "mods");
}

fs::path InstallLab::Native(std::string_view path) const {
    return root_ / fs::path(std::u8string(path.begin(), path.end()));
}

void InstallLab::Put(std::string_view path, std::string_view bytes) {
    const auto file = Native(path);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    const auto age = std::chrono::hours(24 * 365) - std::chrono::milliseconds(1234 * ++filesMade_);
    fs::last_write_time(file, fs::file_time_type::clock::now() - age);
}

void InstallLab::SetReadOnly(std::string_view path) {
    fs::permissions(Native(path), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
}

void InstallLab::Remove(std::string_view path) { fs::remove_all(Native(path)); }

ModJob InstallLab::Job(std::string_view mod) const {
    return {temp_ / "game", temp_ / "mods", {std::string(mod)}};
}

bool InstallLab::Installed(std::string_view mod) const { return IsInstalled(*files_, Job(mod).ModFolder()); }

InstallResult InstallLab::Install(FileSystem& files, std::string_view mod) {
    return RunInstall(files, PlanInstall(files, Job(mod)), {});
}

UninstallResult InstallLab::Uninstall(FileSystem& files, std::string_view mod) {
    return RunUninstall(files, PlanUninstall(files, Job(mod)), {});
}

TreeState InstallLab::State(std::string_view folder) const {
    TreeState state;
    const auto top = Native(folder);
    for (const auto& entry : fs::recursive_directory_iterator(top)) {
        FileState file;
        file.isLink = entry.is_symlink();
        if (file.isLink) {
            file.bytes = fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            file.bytes.assign(std::istreambuf_iterator<char>(stream), {});
            file.modified = entry.last_write_time();
            file.permissions = entry.status().permissions();
            file.names = entry.hard_link_count();
        } else {
            continue;
        }
        const auto name = entry.path().lexically_relative(top).generic_u8string();
        state.emplace(std::string(name.begin(), name.end()), std::move(file));
    }
    return state;
}

} // namespace quillbay
