#include "platform/posix/WinePrefix.h"

#include "platform/PathText.h"
#include "platform/RealPath.h"
#include "platform/posix/FolderListing.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillbay {

namespace {

bool IsFolder(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool Holds(const std::string& root, std::string_view path) {
    if (root == "/") return true;
    return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
}

/// The letter of a drive's link, such as `c:`; 0 for other entries.
char DriveLetter(const std::string& name) {
    if (name.size() != 2 || name[1] != ':') return 0;
    const char letter = name[0];
    if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
    return letter >= 'A' && letter <= 'Z' ? letter : '\0';
}

bool IsDosPath(std::string_view path) {
    if (path.size() < 2 || path[1] != ':' || (path.size() > 2 && !IsSeparator(path[2]))) return false;
    const char letter = static_cast<char>(path[0] & ~0x20);
    return letter >= 'A' && letter <= 'Z';
}

} // namespace

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') return home;
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16 * 1024> texts{};
    const int failed = ::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found);
    return failed == 0 && found != nullptr ? found->pw_dir : "";
}

bool PrefixIsChosen() {
    const char* prefix = std::getenv("WINEPREFIX");
    return prefix != nullptr && *prefix != '\0';
}

std::string EnvironmentPrefix() {
    return PrefixIsChosen() ? std::getenv("WINEPREFIX") : HomeFolder() + "/.wine";
}

std::string PrefixHolding(std::string_view realPath) {
    while (!realPath.empty()) {
        std::string folder(realPath);
        if (IsFolder(folder + "/dosdevices")) return folder;
        realPath = realPath.substr(0, realPath.find_last_of('/') + 1);
        if (!realPath.empty()) realPath.remove_suffix(1);
    }
    return {};
}

std::vector<DosDrive> DrivesOf(const std::string& prefix) {
    std::vector<DosDrive> drives;
    const std::string links = prefix + "/dosdevices";
    for (const auto& entry : ListFolder(links, Detail::Names).ValueOr({})) {
        const char letter = DriveLetter(entry.name);
        if (letter == 0 || entry.kind != EntryKind::Folder) continue;
        if (auto root = FindRealPath(links + '/' + entry.name)) drives.push_back({letter, std::move(*root)});
    }
    return drives;
}

std::string NativePathIn(const std::string& prefix, std::string_view dosPath) {
    if (!IsDosPath(dosPath)) return std::string(dosPath);
    const char letter = static_cast<char>(dosPath[0] & ~0x20);
    for (auto& drive : DrivesOf(prefix)) {
        if (drive.letter != letter) continue;
        std::string rest(dosPath.substr(2));
        std::replace(rest.begin(), rest.end(), '\\', '/');
        return drive.root == "/" && !rest.empty() ? rest : drive.root + rest;
    }
    return std::string(dosPath);
}

const DosDrive* DriveHolding(const std::vector<DosDrive>& drives, std::string_view realPath) {
    const DosDrive* best = nullptr;
    for (const auto& drive : drives) {
        if (!Holds(drive.root, realPath)) continue;
        const bool nearer = best == nullptr || drive.root.size() > best->root.size();
        // Of several letters for one folder the first, which leaves Z: for last.
        const bool earlier = best != nullptr && drive.root == best->root && drive.letter < best->letter;
        if (nearer || earlier) best = &drive;
    }
    return best;
}

} // namespace quillbay
