#include "catalogue/FileList.h"

#include "catalogue/CatalogueTime.h"
#include "library/GameDirectory.h"
#include "library/KnownFolders.h"
#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/PathText.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

constexpr std::string_view kHeadingPrefix = "folder = ";
constexpr std::string_view kRootHeading = "'rootdir'";
constexpr std::string_view kLineEnd = "\r\n";
constexpr char kFieldSeparator = ';';
constexpr char kSubstitute = '?';
constexpr std::size_t kMaxBytes = std::size_t{256} * 1024 * 1024;

std::string_view TakeField(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(kFieldSeparator), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

ListedRecord SplitRecord(std::string_view line) {
    ListedRecord record;
    for (std::string_view* field : {&record.name, &record.size, &record.modified})
        *field = TakeField(line);
    return record;
}

bool IsPlainAscii(std::string_view name) {
    return std::ranges::all_of(name,
                               [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\r'; });
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

void AppendHeading(std::string& text, std::string_view entry) {
    text += kLineEnd;
    text += kHeadingPrefix;
    text += entry.empty() ? kRootHeading : entry;
    text += kLineEnd;
    text += kLineEnd;
}

/// False when the file gets no record.
bool AppendRecord(std::string& text, const DirEntry& file) {
    const std::string name = EncodeFileName(file.name);
    if (name.starts_with(kHeadingPrefix)) return false;
    text += name;
    text += kFieldSeparator;
    text += std::to_string(file.size);
    text += kFieldSeparator;
    text += FormatCatalogueTime(CatalogueTime(file.modified));
    text += kLineEnd;
    return true;
}

} // namespace

Result<std::string> ReadFileList(const FileSystem& files, std::string_view programDirectory) {
    auto bytes = files.Read(Join(programDirectory, kFileListName), 0, kMaxBytes + 1);
    if (bytes && bytes->size() > kMaxBytes) return std::errc::file_too_large;
    return bytes;
}

void ForEachFileListLine(std::string_view bytes, const std::function<void(std::size_t)>& onHeading,
                         const std::function<void(const ListedRecord&)>& onRecord) {
    ForEachLine(bytes, [&](std::string_view line) {
        if (line.starts_with(kHeadingPrefix)) {
            line.remove_prefix(kHeadingPrefix.size());
            onHeading(PositionOfFolder(line == kRootHeading ? std::string_view() : line));
        } else if (line.find_first_not_of(' ') != std::string_view::npos) {
            onRecord(SplitRecord(line));
        }
    });
}

CatalogueTotals CountRecords(std::string_view bytes) {
    CatalogueTotals totals;
    ForEachFileListLine(
        bytes, [](std::size_t) {},
        [&](const ListedRecord& record) {
            ++totals.records;
            const auto digits = record.size.substr(0, record.size.find_first_not_of("0123456789"));
            double size = 0;
            std::from_chars(digits.data(), digits.data() + digits.size(), size);
            totals.bytes += size;
        });
    return totals;
}

std::string FoldFileName(std::string_view name) {
    return IsPlainAscii(name) ? FoldCase(name) : FoldCase(DecodeSystemText(EncodeFileName(name)));
}

RecompileResult RecompileFileList(FileSystem& files, std::string_view gameDirectory,
                                  std::string_view programDirectory) {
    ReadFailure failure;
    KnownFolders known;
    if (IsExistingFolder(files, gameDirectory))
        known = ListKnownFolders(files, gameDirectory, Detail::Full, &failure);
    if (failure) return {RecompileOutcome::Unreadable, failure.path, failure.error, 0};
    if (known[kKnownFolderCount].empty())
        return {RecompileOutcome::NoGame, std::string(gameDirectory), {}, 0};

    std::string text;
    std::size_t recorded = 0;
    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        AppendHeading(text, GameFolders[position]);
        ForEachGameFile(known[position], [&](const DirEntry& file) { recorded += AppendRecord(text, file); });
    }
    std::string list = Join(programDirectory, kFileListName);
    if (const auto error = files.WriteFile(list, text))
        return {RecompileOutcome::NotWritten, std::move(list), error, 0};
    return {RecompileOutcome::Done, {}, {}, recorded};
}

} // namespace quillbay
