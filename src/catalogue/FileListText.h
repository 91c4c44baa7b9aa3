#pragma once

#include "platform/Result.h"
#include "platform/TextLines.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbay {

class FileSystem;

inline constexpr std::string_view kFileListName = "FileList.txt";

/// FileList.txt, the catalogue of a freshly installed game: blocks of a heading (`folder = ` and an entry of
/// GameFolders, or `'rootdir'` for the last, empty one) and a record for each plain file,
/// `name;size;month/day/year hours:minutes:seconds AM or PM`, with empty lines around each heading. Text in
/// the system code page, lines that end in CR LF.
inline constexpr std::string_view kHeadingPrefix = "folder = ";
inline constexpr std::string_view kRootHeading = "'rootdir'";
inline constexpr char kFieldSeparator = ';';

/// The bytes of the program's FileList.txt; file_too_large beyond 256 MB.
Result<std::string> ReadFileList(const FileSystem& files, std::string_view programDirectory);

/// Calls `onHeading(folder name)` and `onRecord(line)` for the lines of a catalogue, in their order.
template <typename OnHeading, typename OnRecord>
void ForEachFileListLine(std::string_view text, OnHeading onHeading, OnRecord onRecord) {
    ForEachLine(text, [&](std::string_view line) {
        if (line.starts_with(kHeadingPrefix))
            onHeading(line.substr(kHeadingPrefix.size()));
        else if (line.find_first_not_of(' ') != std::string_view::npos)
            onRecord(line);
    });
}

struct RecordFields {
    std::string_view name, size, modified; ///< empty where the record has no such field
};

/// The pieces between semicolons; those beyond the third are ignored.
RecordFields SplitRecord(std::string_view record);

struct CatalogueTotals {
    std::size_t records = 0; ///< malformed ones too
    double bytes = 0;        ///< by the digits that the size fields begin with
};

/// What a catalogue says in sum.
CatalogueTotals CountRecords(std::string_view bytes);

} // namespace quillbay
