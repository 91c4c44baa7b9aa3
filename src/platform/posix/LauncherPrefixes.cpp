#include "platform/posix/LauncherPrefixes.h"

#include "platform/posix/BoundedRead.h"
#include "platform/posix/FolderListing.h"
#include "platform/posix/LauncherFiles.h"
#include "platform/posix/WinePrefix.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace quillbay {

namespace {

/// The files of launchers are a few hundred bytes long; a larger one is none of theirs.
constexpr std::size_t kLargestLauncherFile = std::size_t{1024} * 1024;

/// A home as a launcher sees it. Each kind of folder may have two places.
struct Home {
    std::vector<std::string> home, data, config;
};
using Base = std::vector<std::string> Home::*;

/// Folders whose subfolders are prefixes.
constexpr std::pair<Base, const char*> kPrefixFolders[] = {
    {&Home::home, "/Games/Heroic/Prefixes"},
    {&Home::home, "/Games/Heroic/Prefixes/default"},
    {&Home::home, "/Games"},
    {&Home::data, "/bottles/bottles"},
    {&Home::home, "/.PlayOnLinux/wineprefix"},
};

constexpr std::pair<Base, const char*> kSteamRoots[] = {
    {&Home::home, "/.steam/steam"}, {&Home::home, "/.steam/root"}, {&Home::data, "/Steam"}};

constexpr const char* kSteamLibraryLists[] = {"/steamapps/libraryfolders.vdf", "/config/libraryfolders.vdf"};

/// Folders of files that name a prefix.
struct GameFiles {
    Base base;
    const char* folder;
    std::string_view extension;
    std::vector<std::string> (*read)(std::string_view text, std::string_view key);
    const char* key;
};
constexpr GameFiles kGameFiles[] = {
    {&Home::config, "/heroic/GamesConfig", ".json", JsonTexts, "winePrefix"},
    {&Home::config, "/lutris/games", ".yml", YamlTexts, "prefix"},
    {&Home::data, "/lutris/games", ".yml", YamlTexts, "prefix"},
};

/// The folder that the variable names, else the usual one; a relative path counts as none.
std::string FolderOf(const char* variable, std::string usual) {
    const char* folder = std::getenv(variable);
    return folder != nullptr && *folder == '/' ? folder : std::move(usual);
}

std::vector<DirEntry> Entries(const std::string& folder) {
    return ListFolder(folder, Detail::Names).ValueOr({});
}

std::vector<Home> Homes(const std::string& user) {
    std::vector<Home> homes = {{{user},
                                {FolderOf("XDG_DATA_HOME", user + "/.local/share")},
                                {FolderOf("XDG_CONFIG_HOME", user + "/.config")}}};
    const std::string flatpaks = user + "/.var/app";
    for (const auto& entry : Entries(flatpaks)) {
        const std::string app = flatpaks + '/' + entry.name;
        if (entry.kind == EntryKind::Folder)
            homes.push_back(
                {{app}, {app + "/data", app + "/.local/share"}, {app + "/config", app + "/.config"}});
    }
    return homes;
}

std::string ReadText(const std::string& path) {
    std::string text;
    const bool whole = ReadBounded(path, kLargestLauncherFile, [&](std::string_view piece) {
        text += piece;
        return true;
    });
    return whole ? text : std::string();
}

class Collector {
public:
    explicit Collector(std::string user) : user_(std::move(user)) {
        struct stat own {};
        FirstVisit(EnvironmentPrefix() + "/system.reg", own);
    }

    void AddPrefixesOf(const Home& home) {
        for (const auto& [base, path] : kPrefixFolders) {
            for (const auto& folder : home.*base)
                AddChildren(folder + path);
        }
        for (const auto& [base, path] : kSteamRoots) {
            for (const auto& folder : home.*base)
                AddSteam(folder + path);
        }
        for (const auto& kind : kGameFiles) {
            for (const auto& folder : home.*kind.base)
                AddNamed(folder + kind.folder, kind);
        }
    }

    std::vector<LauncherPrefix> NewestFirst() && {
        std::ranges::stable_sort(found_, [](const Found& a, const Found& b) {
            return std::pair(a.changed.tv_sec, a.changed.tv_nsec) >
                   std::pair(b.changed.tv_sec, b.changed.tv_nsec);
        });
        std::vector<LauncherPrefix> prefixes;
        for (auto& found : found_)
            prefixes.push_back(std::move(found.prefix));
        return prefixes;
    }

private:
    struct Found {
        LauncherPrefix prefix;
        timespec changed;
    };

    /// False when there is no such entry, or it was visited by another of its names.
    bool FirstVisit(const std::string& path, struct stat& info) {
        return ::stat(path.c_str(), &info) == 0 && visited_.emplace(info.st_dev, info.st_ino).second;
    }

    /// `folder` itself, or the `pfx` in it where Proton keeps a prefix.
    void AddPrefix(const std::string& folder) {
        for (const auto* inner : {"", "/pfx"}) {
            std::string path = folder + inner;
            struct stat info {};
            if (!FirstVisit(path + "/system.reg", info) || !S_ISREG(info.st_mode)) continue;
            found_.push_back({{std::move(path), static_cast<std::uint64_t>(info.st_size)}, info.st_mtim});
        }
    }

    void AddChildren(const std::string& folder) {
        struct stat info {};
        if (!FirstVisit(folder, info)) return;
        for (const auto& entry : Entries(folder)) {
            if (entry.kind == EntryKind::Folder) AddPrefix(folder + '/' + entry.name);
        }
    }

    void AddSteam(const std::string& root) {
        struct stat info {};
        if (!FirstVisit(root, info)) return;
        AddChildren(root + "/steamapps/compatdata");
        for (const auto* list : kSteamLibraryLists) {
            for (const auto& library : SteamLibraries(ReadText(root + list)))
                if (library.starts_with('/')) AddChildren(library + "/steamapps/compatdata");
        }
    }

    void AddNamed(const std::string& folder, const GameFiles& kind) {
        for (const auto& entry : Entries(folder)) {
            if (!entry.name.ends_with(kind.extension)) continue;
            for (const auto& text : kind.read(ReadText(folder + '/' + entry.name), kind.key)) {
                const std::string path = text.starts_with("~/") ? user_ + text.substr(1) : text;
                if (path.starts_with('/')) AddPrefix(path);
            }
        }
    }

    std::string user_;
    std::set<std::pair<dev_t, ino_t>> visited_;
    std::vector<Found> found_;
};

} // namespace

std::vector<LauncherPrefix> LauncherPrefixes() {
    const std::string user = HomeFolder();
    if (user.empty()) return {};
    Collector collector(user);
    for (const auto& home : Homes(user))
        collector.AddPrefixesOf(home);
    return std::move(collector).NewestFirst();
}

} // namespace quillbay
