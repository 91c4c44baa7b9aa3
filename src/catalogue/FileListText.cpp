#include "catalogue/FileListText.h"

#include "platform/FileSystem.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::size_t kMaxBytes = std::size_t{256} * 1024 * 1024;

std::string_view TakeField(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(kFieldSeparator), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

/// Of the digits that the text begins with; 0 without one.
double LeadingNumber(std::string_view text) {
    double number = 0;
    for (const char c : text.substr(0, text.find_first_not_of("0123456789")))
        number = 10 * number + (c - '0');
    return number;
}

} // namespace

Result<std::string> ReadFileList(const FileSystem& files, std::string_view programDirectory) {
    auto bytes = files.Read(Join(programDirectory, kFileListName), 0, kMaxBytes + 1);
    if (bytes && bytes->size() > kMaxBytes) return std::errc::file_too_large;
    return bytes;
}

RecordFields SplitRecord(std::string_view record) {
    RecordFields fields;
    for (std::string_view* field : {&fields.name, &fields.size, &fields.modified})
        *field = TakeField(record);
    return fields;
}

CatalogueTotals CountRecords(std::string_view bytes) {
    CatalogueTotals totals;
    ForEachFileListLine(
        bytes, [](std::string_view) {},
        [&](std::string_view record) {
            ++totals.records;
            totals.bytes += LeadingNumber(SplitRecord(record).size);
        });
    return totals;
}

} // namespace quillbay
