#include "shell/ManagerItems.h"

#include "catalogue/FileList.h"
#include "library/FindEntry.h"
#include "library/GameDirectory.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

ManagerItems FindManagerItems(const FileSystem& files, std::string_view gameDirectory,
                              std::string_view programDirectory) {
    ManagerItems items;
    if (IsExistingFolder(files, gameDirectory)) {
        const auto game = files.List(gameDirectory, Detail::Names).ValueOr({});
        const auto hasMarker = [&](std::string_view name) {
            const DirEntry* found = FindEntry(game, name, EntryKind::File);
            return found && found->name == name && found->IsPlainFile();
        };
        items.launchGame = FindEntry(game, kGameExecutable, EntryKind::File) != nullptr;
        items.launchMapEditor = std::ranges::all_of(kMapEditorMarkers, hasMarker);
        items.installMapEditor = !items.launchMapEditor;
    }
    const auto list = files.Stat(Join(programDirectory, kFileListName));
    items.openFinder = list && list->kind == EntryKind::File;
    return items;
}

MarkerFailure WriteMapEditorMarkers(FileSystem& files, std::string_view gameDirectory) {
    const auto game = files.List(gameDirectory, Detail::Names);
    if (!game) return {std::string(gameDirectory), game.Error()};
    for (const std::string_view name : kMapEditorMarkers) {
        const std::string path = Join(gameDirectory, name);
        const DirEntry* old = FindEntry(*game, name, EntryKind::File);
        if (old && old->name != name) {
            if (const auto error = files.Rename(Join(gameDirectory, old->name), path)) return {path, error};
        }
        if (const auto error = files.WriteFile(path, {})) return {path, error};
    }
    return {};
}

} // namespace quillbay
