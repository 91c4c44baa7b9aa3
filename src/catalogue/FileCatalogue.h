#pragma once

#include "common/Result.h"
#include "platform/LocalTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbay {

/// The position, counted from 1, of a folder of the catalogue in GameFolders: exact spelling, the last one
/// that fits; 79 for the empty name and for 'rootdir', 0 when there is none.
std::uint8_t GetFolderCode(std::string_view folderName);

/// The length of a text in characters; 31 for longer ones.
std::uint8_t GetLengthBucket(std::string_view text);

/// A file name as bytes of the system code page. What the code page does not hold, and the line end that
/// would break a record in two, becomes a question mark.
std::string EncodeFileName(std::string_view name);

/// The form in which names of the disk and of the catalogue are compared: as the catalogue can hold them,
/// letter case folded.
std::string FoldFileName(std::string_view name);

/// FileList.txt in memory. A file is looked up by its name in the form of FoldFileName, its folder's code,
/// and the GetLengthBucket of that form; of several records of one file the first counts. Records without a
/// name, a size, a valid time or a known folder are passed over.
class FileCatalogue {
public:
    /// Reads the bytes of a catalogue.
    explicit FileCatalogue(std::string_view bytes);
    static Result<FileCatalogue> LoadFileList(const FileSystem& files, std::string_view programDirectory);

    bool CheckIfFileExists(const std::string& searchText, std::uint8_t folderCode,
                           std::uint8_t lenOfStr) const;
    /// The recorded size; none without a record.
    std::optional<std::uint64_t> GetSizeFromFile(const std::string& searchText, std::uint8_t folderCode,
                                                 std::uint8_t lenOfStr) const;
    /// The recorded time; none without a record.
    std::optional<LocalTime> GetDateFromFile(const std::string& searchText, std::uint8_t folderCode,
                                             std::uint8_t lenOfStr) const;
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
