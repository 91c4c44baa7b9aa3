#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

/// FileList.txt, the catalogue of a freshly installed game: blocks of a heading (`folder = ` and an entry of
/// GameFolders, or `'rootdir'` for the last, empty one) and a record for each plain file,
/// `name;size;month/day/year hours:minutes:seconds AM or PM`, with empty lines around each heading. Text in
/// the system code page, lines that end in CR LF.
namespace quillbay {

class FileSystem;

inline constexpr std::string_view kFileListName = "FileList.txt";

/// The bytes of the program's FileList.txt; file_too_large beyond 256 MB.
Result<std::string> ReadFileList(const FileSystem& files, std::string_view programDirectory);

/// The pieces of a record between semicolons; those beyond the third are ignored.
struct ListedRecord {
    std::string_view name, size, modified; ///< empty where the record has no such piece
};

/// Reads the bytes of a catalogue line by line. A heading gives the position of its folder in GameFolders,
/// counted from 0, or kGameFolderCount when there is no entry of exactly that spelling.
void ForEachFileListLine(std::string_view bytes, const std::function<void(std::size_t position)>& onHeading,
                         const std::function<void(const ListedRecord& record)>& onRecord);

struct CatalogueTotals {
    std::size_t records = 0; ///< malformed ones too
    double bytes = 0;        ///< by the digits that the size fields begin with
};

/// What a catalogue says in sum.
CatalogueTotals CountRecords(std::string_view bytes);

/// The form in which names of the disk and of the catalogue are compared: as the catalogue can hold them (see
/// RecompileFileList), letter case folded.
std::string FoldFileName(std::string_view name);

enum class RecompileOutcome {
    Done,
    NoGame,     ///< the game directory is unknown or gone
    Unreadable, ///< one of its folders is there but cannot be listed
    NotWritten,
};

struct RecompileResult {
    RecompileOutcome outcome = RecompileOutcome::Done;
    std::string concerned; ///< the path that made it fail
    std::error_code error;
    std::size_t files = 0; ///< recorded
};

/// Writes the program's FileList.txt anew from the game as it is. What the code page does not hold of a name,
/// and the line end that would break a record in two, becomes a question mark. Files that vanish meanwhile
/// are left out, and so is a file whose name begins like a heading, which would hide the records after it.
/// Whatever fails, the old catalogue stays.
RecompileResult RecompileFileList(FileSystem& files, std::string_view gameDirectory,
                                  std::string_view programDirectory);

} // namespace quillbay
