#pragma once

#include "library/GameFolders.h"
#include "platform/LocalTime.h"
#include "platform/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillbay {

class FileSystem;
struct DirEntry;

enum class FileChange {
    None,
    New,      ///< not recorded
    Modified, ///< recorded with another size or time
};

/// FileList.txt in memory. Of several records of one file the first counts; records without a name, a size, a
/// valid time or a known folder are passed over. Positions are those of GameFolders, counted from 0.
class FileCatalogue {
public:
    struct Record {
        std::uint64_t size;
        LocalTime modified;
    };

    /// Reads the bytes of a catalogue.
    explicit FileCatalogue(std::string_view bytes);
    /// Reads the program's catalogue. bad_message when it is not empty and no line is the heading of a folder
    /// of the game, as with line ends of another kind: every file would count as new.
    static Result<FileCatalogue> LoadFileList(const FileSystem& files, std::string_view programDirectory);

    /// The record of a file of that folder, whatever letter case its name is in; null without one. Answers
    /// whether it exists (CheckIfFileExists), its size (GetSizeFromFile) and its time (GetDateFromFile).
    const Record* Find(std::size_t position, std::string_view name) const;
    /// `file` is one of the folder, listed with Detail::Full unless the folder has no records.
    FileChange Compare(std::size_t position, const DirEntry& file) const;
    /// False when no file of the folder has a record.
    bool HasRecords(std::size_t position) const { return !folders_[position].empty(); }

private:
    /// By name in the form of FoldFileName.
    std::array<std::unordered_map<std::string, Record>, kGameFolderCount> folders_;
    bool hasHeading_ = false;
};

} // namespace quillbay
