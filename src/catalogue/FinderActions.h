#pragma once

#include "catalogue/FileCatalogue.h"
#include "library/KnownFolders.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Copying, moving and deleting files of the game that were found new or modified.
namespace quillbay {

enum class FileAction { Copy, Move, Delete };

/// Why an action does nothing.
struct FileActionRefusal {
    enum class Cause {
        GameUnreadable,    ///< the game directory, or a known folder in it, cannot be read
        NoDestination,     ///< the destination cannot be read or made
        DestinationIsGame, ///< under whatever name: there is nothing to do
    };

    Cause cause = Cause::GameUnreadable;
    std::string concerned; ///< the path behind it
    std::error_code error; ///< the reason, if there is one
};

/// One file that an action works on.
struct FileActionItem {
    std::string name;         ///< as it was listed: an entry of GameFolders and a file name
    std::size_t position = 0; ///< in GameFolders, from 0
    std::string from;         ///< its path; empty when it is gone
    bool isLink = false;
    std::string existing;        ///< the path of what has its name in the destination, in any letter case
    bool folderInTheWay = false; ///< and that is a folder
};

/// What an action would do. Each folder is listed once; nothing is changed.
struct FileActionPlan {
    FileAction action = FileAction::Delete;
    std::optional<FileActionRefusal> refusal;
    std::vector<FileActionItem> items;
    // Names that were left out: these files stay in the game.
    std::vector<std::string> unchanged; ///< they are as recorded
    std::vector<std::string> kept;      ///< the destination of a move has files of these names
    std::string destination; ///< in stored spelling, without links; as given when it does not exist yet
    KnownFolders destinationFolders;
};

struct FileActionResult {
    std::optional<FileActionRefusal> refusal;
    std::size_t done = 0;
    std::vector<std::string> failed; ///< items that were not copied, moved or deleted, by their names
    std::error_code firstError;      ///< the reason of the first of them
};

/// `destination` counts for Copy and Move only. `names` are relative paths as a scan found them. With a
/// `catalogue`, which may be null, files that are neither new nor modified any more are left out: after the
/// scan a mod that was uninstalled may have put the game's own files back.
FileActionPlan PlanFileAction(const FileSystem& files, FileAction action, std::string_view gameDirectory,
                              std::string_view destination, const std::vector<std::string>& names,
                              const FileCatalogue* catalogue);

/// Copy and Move make the destination (its last level) and every known folder in it, and remove those that
/// are empty at the end. Copy replaces files, Move never does. A file that fails is skipped; a file of the
/// game that moves to another volume is removed only after its copy is complete. `progress(done, total)` is
/// called after each item.
FileActionResult RunFileAction(FileSystem& files, const FileActionPlan& plan,
                               const std::function<void(std::size_t, std::size_t)>& progress);

} // namespace quillbay
