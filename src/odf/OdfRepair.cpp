#include "odf/OdfRepair.h"

#include "odf/OdfLines.h"
#include "platform/TextLines.h"

namespace quillbay {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kShownLineFeed = "\u2028";

std::string Replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const auto found = text.find(from);
        result.append(text.substr(0, found));
        if (found == std::string_view::npos) return result;
        result.append(to);
        text.remove_prefix(found + from.size());
    }
}

/// The lines for which `keep` holds, each with CR LF.
template <typename Keep>
std::string WithLineEnds(std::string_view text, Keep keep) {
    std::string result;
    result.reserve(text.size() + kLineEnd.size());
    ForEachLine(text, [&](std::string_view line) {
        if (keep(line)) result.append(line).append(kLineEnd);
    });
    return result;
}

} // namespace

std::optional<std::string> RemoveUnusedLines(std::string_view bytes) {
    bool isUnchanged = true;
    bool hasLineFeed = false;
    std::string kept = WithLineEnds(bytes, [&](std::string_view line) {
        const bool isUsed = !IsCommentLine(line) && !IsBlankLine(line);
        isUnchanged = isUnchanged && isUsed;
        hasLineFeed = hasLineFeed || line.find('\n') != std::string_view::npos;
        return isUsed;
    });
    if (isUnchanged || hasLineFeed) return std::nullopt;
    return kept;
}

std::string OdfLineToText(std::string_view line) { return Replaced(line, "\n", kShownLineFeed); }

std::string OdfBytesToText(std::string_view bytes) {
    std::string text;
    ForEachLine(DecodeSystemText(bytes), [&, first = true](std::string_view line) mutable {
        if (!first) text.append(kLineEnd);
        first = false;
        text.append(OdfLineToText(line));
    });
    return text;
}

EncodedText OdfTextToBytes(std::string_view text) {
    EncodedText encoded = EncodeSystemText(Replaced(text, kShownLineFeed, "\n"));
    encoded.bytes.append(kLineEnd);
    return encoded;
}

bool KeepsEveryByte(std::string_view bytes, std::string_view text) {
    const EncodedText encoded = OdfTextToBytes(text);
    return !encoded.unencodable &&
           encoded.bytes == WithLineEnds(bytes, [](std::string_view) { return true; });
}

} // namespace quillbay
