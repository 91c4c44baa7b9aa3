#include "catalogue/FileCatalogue.h"

#include "catalogue/CatalogueTime.h"
#include "catalogue/FileListText.h"
#include "library/GameFolders.h"
#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

constexpr std::uint8_t kLastBucket = 31;
constexpr char kSubstitute = '?';

bool IsPlainAscii(std::string_view name) {
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\r'; });
}

/// The form in which names are compared, of a name that the catalogue can hold.
std::string FoldHeldName(std::string_view bytes) { return FoldCase(DecodeSystemText(bytes)); }

std::optional<std::uint64_t> ParseSize(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    text = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    std::uint64_t size = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return size;
}

} // namespace

std::uint8_t GetFolderCode(std::string_view folderName) {
    if (folderName.empty() || folderName == kRootHeading) return kGameFolderCount;
    const auto found = std::find(GameFolders.rbegin(), GameFolders.rend(), folderName);
    return static_cast<std::uint8_t>(GameFolders.rend() - found);
}

std::uint8_t GetLengthBucket(std::string_view text) {
    std::uint8_t length = 0;
    for (std::size_t at = 0; at < text.size() && length < kLastBucket; ++length)
        at += ReadUtf8(text, at).length;
    return length;
}

std::string EncodeFileName(std::string_view name) {
    if (IsPlainAscii(name)) return std::string(name);
    std::string bytes;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t length = ReadUtf8(name, at).length;
        const EncodedText encoded = EncodeSystemText(name.substr(at, length));
        bytes += encoded.unencodable || encoded.bytes == "\r" ? std::string(1, kSubstitute) : encoded.bytes;
        at += length;
    }
    return bytes;
}

std::string FoldFileName(std::string_view name) {
    return IsPlainAscii(name) ? FoldCase(name) : FoldHeldName(EncodeFileName(name));
}

FileCatalogue::FileCatalogue(std::string_view bytes) : buckets_(BucketAt(kGameFolderCount, kLastBucket) + 1) {
    std::uint8_t folderCode = 0;
    ForEachFileListLine(
        bytes, [&](std::string_view heading) { folderCode = GetFolderCode(heading); },
        [&](std::string_view record) {
            if (folderCode != 0) Add(folderCode, record);
        });
}

Result<FileCatalogue> FileCatalogue::LoadFileList(const FileSystem& files,
                                                  std::string_view programDirectory) {
    const auto bytes = ReadFileList(files, programDirectory);
    if (!bytes) return bytes.Error();
    bool hasHeading = bytes->empty();
    ForEachFileListLine(
        *bytes, [&](std::string_view heading) { hasHeading |= GetFolderCode(heading) != 0; },
        [](std::string_view) {});
    if (!hasHeading) return std::errc::bad_message;
    return FileCatalogue(*bytes);
}

void FileCatalogue::Add(std::uint8_t folderCode, std::string_view record) {
    const RecordFields fields = SplitRecord(record);
    const auto size = ParseSize(fields.size);
    const auto modified = ParseCatalogueTime(fields.modified);
    if (fields.name.empty() || !size || !modified) return;
    std::string name = FoldHeldName(fields.name);
    Bucket& bucket = buckets_[BucketAt(folderCode, GetLengthBucket(name))];
    bucket.try_emplace(std::move(name), Record{*size, *modified});
}

std::size_t FileCatalogue::BucketAt(std::uint8_t folderCode, std::uint8_t lenOfStr) {
    return (folderCode - std::size_t{1}) * kLastBucket + lenOfStr - 1;
}

const FileCatalogue::Record* FileCatalogue::Find(const std::string& searchText, std::uint8_t folderCode,
                                                 std::uint8_t lenOfStr) const {
    const Bucket& bucket = buckets_[BucketAt(folderCode, lenOfStr)];
    const auto found = bucket.find(searchText);
    return found == bucket.end() ? nullptr : &found->second;
}

bool FileCatalogue::CheckIfFileExists(const std::string& searchText, std::uint8_t folderCode,
                                      std::uint8_t lenOfStr) const {
    return Find(searchText, folderCode, lenOfStr) != nullptr;
}

std::optional<std::uint64_t> FileCatalogue::GetSizeFromFile(const std::string& searchText,
                                                            std::uint8_t folderCode,
                                                            std::uint8_t lenOfStr) const {
    const Record* record = Find(searchText, folderCode, lenOfStr);
    return record ? std::optional(record->size) : std::nullopt;
}

std::optional<LocalTime> FileCatalogue::GetDateFromFile(const std::string& searchText,
                                                        std::uint8_t folderCode,
                                                        std::uint8_t lenOfStr) const {
    const Record* record = Find(searchText, folderCode, lenOfStr);
    return record ? std::optional(record->modified) : std::nullopt;
}

FileChange FileCatalogue::Compare(const DirEntry& file, std::uint8_t folderCode) const {
    const std::string name = FoldFileName(file.name);
    const std::uint8_t bucket = GetLengthBucket(name);
    const auto size = GetSizeFromFile(name, folderCode, bucket);
    if (!size) return FileChange::New;
    const bool isSame =
        *size == file.size && GetDateFromFile(name, folderCode, bucket) == CatalogueTime(file.modified);
    return isSame ? FileChange::None : FileChange::Modified;
}

bool FileCatalogue::HasRecords(std::uint8_t folderCode) const {
    const auto first = buckets_.begin() + static_cast<std::ptrdiff_t>(BucketAt(folderCode, 1));
    return std::any_of(first, first + kLastBucket, [](const Bucket& bucket) { return !bucket.empty(); });
}

} // namespace quillbay
