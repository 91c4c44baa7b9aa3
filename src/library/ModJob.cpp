#include "library/ModJob.h"

#include "library/GameDirectory.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

/// Takes the first component off `path`; empty when nothing is left.
std::string_view TakeComponent(std::string_view& path) {
    while (!path.empty() && IsSeparator(path.front()))
        path.remove_prefix(1);
    std::size_t length = 0;
    while (length < path.size() && !IsSeparator(path[length]))
        ++length;
    const std::string_view component = path.substr(0, length);
    path.remove_prefix(length);
    return component;
}

/// True when `path` is `folder` or lies in it; both absolute and without links.
bool IsSameOrInside(std::string_view path, std::string_view folder) {
    for (;;) {
        const std::string_view expected = TakeComponent(folder);
        if (expected.empty()) return true;
        if (!EqualFolded(TakeComponent(path), expected)) return false;
    }
}

} // namespace

std::string ModJob::ModFolder() const { return mod.Empty() ? std::string() : Join(modsFolder, mod.text); }

GameDirectoryState CheckGameDirectory(const FileSystem& files, std::string_view gameDirectory,
                                      std::string_view modsFolder) {
    if (!IsExistingFolder(files, gameDirectory)) return GameDirectoryState::Missing;
    const auto game = files.RealPath(gameDirectory);
    if (!game) return GameDirectoryState::Missing;
    const auto mods = files.RealPath(modsFolder);
    if (mods && IsSameOrInside(*game, *mods)) return GameDirectoryState::InsideMods;
    return GameDirectoryState::Usable;
}

} // namespace quillbay
