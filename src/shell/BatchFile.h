#pragma once

#include "platform/CodePage.h"
#include "platform/FileSystem.h"

#include <string>
#include <string_view>
#include <system_error>

/// The batch files in the game directory that start the game and its map editor.
namespace quillbay {

/// The whole file: lines ended by CR LF, in the system code page. `dosFolder` is the short path of the game
/// directory. `unencodable` is also a character that would end a line or the quoted path.
EncodedText GameBatchText(std::string_view dosFolder);
/// `fileName` is what the editor opens; it stands there as it is.
EncodedText MapEditorBatchText(std::string_view dosFolder, std::string_view fileName);

enum class BatchOutcome {
    Written,
    GameMissing, ///< no game directory; nothing was written, as in all that follow
    NoDosPath,   ///< Windows programs cannot reach it
    Unencodable, ///< `character` cannot stand in a batch file
    NoRights,    ///< the game directory, `path`, cannot be written
    NotWritten,
};

struct BatchResult {
    BatchOutcome outcome = BatchOutcome::Written;
    std::string name; ///< of the batch file
    std::string path;
    std::string character;
    std::error_code error;
};

/// Writes the batch file anew, which runs in the game directory. `prefix` is the Wine prefix in which it will
/// be started, as for ShortPath.
BatchResult WriteGameBatch(FileSystem& files, std::string_view gameDirectory, std::string_view prefix = {});
BatchResult WriteMapEditorBatch(FileSystem& files, std::string_view gameDirectory, std::string_view fileName,
                                std::string_view prefix = {});

} // namespace quillbay
