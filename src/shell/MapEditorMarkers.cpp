#include "shell/MapEditorMarkers.h"

#include "library/FindEntry.h"
#include "platform/PathText.h"

namespace quillbay {

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
