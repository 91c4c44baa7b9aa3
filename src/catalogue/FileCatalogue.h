#pragma once

#include "platform/LocalTime.h"
#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbay {

struct DirEntry;

/// The position, counted from 1, of a folder of the catalogue in GameFolders: exact spelling, the last one
/// that fits; 79 for the empty name and for 'rootdir', 0 when there is none.
std::uint8_t GetFolderCode(std::string_view folderName);

/// The folder code of a position in GameFolders, counted from 0.
constexpr std::uint8_t FolderCodeAt(std::size_t position) { return static_cast<std::uint8_t>(position + 1); }

/// The length of a text in characters; 31 for longer ones.
std::uint8_t GetLengthBucket(std::string_view text);

/// A file name as bytes of the system code page. What the code page does not hold, and the line end that
/// would break a record in two, becomes a question mark.
std::string EncodeFileName(std::string_view name);

/// The form in which names of the disk and of the catalogue are compared: as the catalogue can hold them,
/// letter case folded.
std::string FoldFileName(std::string_view name);

enum class FileChange {
    None,
    New,      ///< not recorded
    Modified, ///< recorded with another size or time
};

/// FileList.txt in memory. A file is looked up by its name in the form of FoldFileName, its folder's code,
/// and the GetLengthBucket of that form; of several records of one file the first counts. Records without a
/// name, a size, a valid time or a known folder are passed over.
class FileCatalogue {
public:
    /// Reads the bytes of a catalogue.
    explicit FileCatalogue(std::string_view bytes);
    /// Reads the program's catalogue. bad_message when it is not empty and no line is the heading of a folder
    /// of the game, as with line ends of another kind: every file would count as new.
    static Result<FileCatalogue> LoadFileList(const FileSystem& files, std::string_view programDirectory);

    bool CheckIfFileExists(const std::string& searchText, std::uint8_t folderCode,
                           std::uint8_t lenOfStr) const;
    /// The recorded size; none without a record.
    std::optional<std::uint64_t> GetSizeFromFile(const std::string& searchText, std::uint8_t folderCode,
                                                 std::uint8_t lenOfStr) const;
    /// The recorded time; none without a record.
    std::optional<LocalTime> GetDateFromFile(const std::string& searchText, std::uint8_t folderCode,
                                             std::uint8_t lenOfStr) const;
    /// `file` is one of the folder, listed with Detail::Full unless the folder has no records.
    FileChange Compare(const DirEntry& file, std::uint8_t folderCode) const;
    /// False when no file of the folder has a record.
    bool HasRecords(std::uint8_t folderCode) const;

private:
    struct Record {
        std::uint64_t size;
        LocalTime modified;
    };
    using Bucket = std::unordered_map<std::string, Record>;

    static std::size_t BucketAt(std::uint8_t folderCode, std::uint8_t lenOfStr);
    void Add(std::uint8_t folderCode, std::string_view record);
    const Record* Find(const std::string& searchText, std::uint8_t folderCode, std::uint8_t lenOfStr) const;

    std::vector<Bucket> buckets_;
};

} // namespace quillbay
