#include "modinfo/ModInfo.h"

#include "common/modMisc.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillbay {

namespace {

struct Field {
    std::string_view prefix;
    std::optional<std::string> ModInfoValues::*value;
    std::string ModInfoCaptions::*caption;
    std::string_view withoutLine;
    std::string_view blank;
    std::string_view withoutFile;
};

constexpr std::string_view kNoFile = "(File 'ModInfo.txt' not found)";
constexpr std::string_view kDefaultHeading = "Other: ";
constexpr std::string_view kLineEnd = "\r\n";

/// In the order in which they are written.
constexpr std::array<Field, 5> kFields = {{
    {"Author: ", &ModInfoValues::author, &ModInfoCaptions::author, "(File does not contain author)",
     "(File does not contain author)", kNoFile},
    {"Description: ", &ModInfoValues::description, &ModInfoCaptions::description,
     "(File does not contain description)", "(File does not contain description)", kNoFile},
    {"Version: ", &ModInfoValues::version, &ModInfoCaptions::version,
     "(File does not contain version number)", "(File does not contain version number)", kNoFile},
    {"Other Heading: ", &ModInfoValues::otherHeading, &ModInfoCaptions::otherHeading, kDefaultHeading,
     "(File does not contain OtherHeading)", kDefaultHeading},
    {"Other: ", &ModInfoValues::other, &ModInfoCaptions::other, "(File does not contain 'other')",
     "(File does not contain Other)", kNoFile},
}};

constexpr std::size_t LongestPrefix() {
    std::size_t longest = 0;
    for (const Field& field : kFields)
        longest = std::max(longest, field.prefix.size());
    return longest;
}

constexpr std::size_t kMaxLineBytes = LongestPrefix() + ModInfoParser::kMaxValueBytes;
constexpr std::size_t kReadBytes = 1024 * 1024;

std::string MakeCaption(const std::optional<ModInfoValues>& values, const Field& field) {
    if (!values) return std::string(field.withoutFile);
    const std::optional<std::string>& value = (*values).*field.value;
    if (!value) return std::string(field.withoutLine);
    if (value->find_first_not_of(' ') == std::string::npos) return std::string(field.blank);
    return std::string(CutText(DecodeSystemText(*value), kMaxShownCharacters));
}

} // namespace

void ModInfoParser::Feed(std::string_view bytes) {
    if (bytes.empty()) return;
    if (std::exchange(afterCr_, false) && bytes.front() == '\n') bytes.remove_prefix(1);
    for (;;) {
        const auto end = bytes.find('\r');
        Keep(bytes.substr(0, end));
        if (end == std::string_view::npos) return;
        EndLine();
        bytes.remove_prefix(end + 1);
        if (bytes.empty()) {
            afterCr_ = true;
            return;
        }
        if (bytes.front() == '\n') bytes.remove_prefix(1);
    }
}

ModInfoValues ModInfoParser::Finish() {
    EndLine();
    return std::move(values_);
}

void ModInfoParser::Keep(std::string_view bytes) { line_ += bytes.substr(0, kMaxLineBytes - line_.size()); }

void ModInfoParser::EndLine() {
    for (const Field& field : kFields) {
        if (line_.starts_with(field.prefix)) {
            values_.*field.value = line_.substr(field.prefix.size(), kMaxValueBytes);
        }
    }
    line_.clear();
}

ModInfoCaptions MakeModInfoCaptions(const std::optional<ModInfoValues>& values) {
    ModInfoCaptions captions;
    for (const Field& field : kFields)
        captions.*field.caption = MakeCaption(values, field);
    return captions;
}

std::vector<std::string_view> CutFields(const ModInfoValues& values) {
    std::vector<std::string_view> cut;
    for (const Field& field : kFields) {
        const std::string text = DecodeSystemText((values.*field.value).value_or(std::string()));
        if (CutText(text, kMaxShownCharacters).size() < text.size())
            cut.push_back(field.prefix.substr(0, field.prefix.find(':')));
    }
    return cut;
}

EncodedText EncodeModInfo(const ModInfoCaptions& values) {
    std::string text;
    for (const Field& field : kFields) {
        if (!text.empty()) text += kLineEnd;
        text.append(field.prefix).append(values.*field.caption).append(kLineEnd);
    }
    return EncodeSystemText(text);
}

std::optional<ModInfoValues> ReadModInfo(const FileSystem& files, std::string_view path) {
    ModInfoParser parser;
    for (std::uint64_t offset = 0;;) {
        const auto piece = files.Read(path, offset, kReadBytes);
        if (!piece) return std::nullopt;
        parser.Feed(*piece);
        offset += piece->size();
        if (piece->size() < kReadBytes) return parser.Finish();
    }
}

} // namespace quillbay
