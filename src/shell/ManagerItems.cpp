#include "shell/ManagerItems.h"

#include "catalogue/FileList.h"
#include "library/GameDirectory.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"
#include "shell/MapEditorMarkers.h"

#include <algorithm>

namespace quillbay {

ManagerItems FindManagerItems(const FileSystem& files, std::string_view gameDirectory,
                              std::string_view programDirectory) {
    ManagerItems items;
    if (IsExistingFolder(files, gameDirectory)) {
        const auto game = files.List(gameDirectory, Detail::Names).ValueOr({});
        const auto hasPlainFile = [&](std::string_view name) {
            return std::any_of(game.begin(), game.end(), [&](const DirEntry& entry) {
                return entry.name == name && entry.IsPlainFile();
            });
        };
        items.launchGame = std::any_of(game.begin(), game.end(), [](const DirEntry& entry) {
            return entry.kind == EntryKind::File && EqualFolded(entry.name, kGameExecutable);
        });
        items.launchMapEditor = std::ranges::all_of(kMapEditorMarkers, hasPlainFile);
        items.installMapEditor = !items.launchMapEditor;
    }
    const auto list = files.Stat(Join(programDirectory, kFileListName));
    items.openFinder = list && list->kind == EntryKind::File;
    return items;
}

} // namespace quillbay
