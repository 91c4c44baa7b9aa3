#include "support/InstallLab.h"

#include "library/InstalledMods.h"
#include "platform/PathText.h"

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
        else if (found->second != state)
            text += (found->second.bytes == state.bytes ? "other time or kind: " : "other contents: ") +
                    path + "\n";
    }
    for (const auto& [path, state] : after)
        if (!before.contains(path)) text += "new: " + path + "\n";
    return text;
}

InstallLab::InstallLab() {
    test::PutFolder(temp_ / "game");
    test::PutFolder(temp_ / "mods");
}

void InstallLab::Put(const std::string& path, std::string_view bytes) {
    test::PutFile(temp_ / path, bytes);
    const auto age = std::chrono::hours(24 * 365) - std::chrono::milliseconds(1234 * ++filesMade_);
    fs::last_write_time(Native(path), fs::file_time_type::clock::now() - age);
}

void InstallLab::Make(std::initializer_list<const char*> paths) {
    for (const char* path : paths)
        Put(path, path);
}

void InstallLab::SetReadOnly(std::string_view path) {
    fs::permissions(Native(path), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
}

bool InstallLab::Installed(std::string_view mod) const {
    return IsInstalled(*files_, Job(mod).FolderInLibrary());
}

std::int64_t InstallLab::Number(std::string_view mod) const {
    const auto record = ReadInstallRecord(*files_, Join(Job(mod).FolderInLibrary(), kBackupName));
    return record && *record ? (*record)->number : 0;
}

Contents InstallLab::Saved(std::string_view mod) const {
    const auto folder = "mods/" + std::string(mod);
    auto contents = Read(folder + (fs::exists(Native(folder + "/Backup")) ? "/Backup" : "/backup"));
    contents.erase(std::string(kRecordName));
    return contents;
}

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
        } else {
            continue;
        }
        const auto name = entry.path().lexically_relative(top).generic_u8string();
        state.emplace(std::string(name.begin(), name.end()), std::move(file));
    }
    return state;
}

Contents InstallLab::Read(std::string_view folder) const {
    Contents contents;
    for (const auto& [path, file] : State(folder))
        contents[path] = (file.isLink ? "-> " : "") + file.bytes;
    return contents;
}

std::string InstallLab::SharedFiles() const {
    std::string shared;
    for (const auto& entry : fs::recursive_directory_iterator(Native("")))
        if (!entry.is_symlink() && entry.is_regular_file() && entry.hard_link_count() > 1)
            shared += entry.path().string() + "\n";
    return shared;
}

} // namespace quillbay
