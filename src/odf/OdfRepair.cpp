#include "odf/OdfRepair.h"

#include "odf/OdfLines.h"
#include "platform/TextLines.h"

namespace quillbay {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLargestShownFile = std::size_t{4} * 1024 * 1024; // bytes
constexpr std::size_t kLongestShownLine = std::size_t{256} * 1024;      // bytes

/// The lines for which `keep` holds, each with CR LF.
template <typename Keep>
std::string LinesWithEnds(std::string_view text, Keep keep) {
    std::string result;
    result.reserve(text.size() + kLineEnd.size());
    ForEachLine(text, [&](std::string_view line) {
        if (keep(line)) result.append(line).append(kLineEnd);
    });
    return result;
}

} // namespace

bool IsTooLargeToShow(std::string_view bytes) {
    bool isTooLarge = bytes.size() > kLargestShownFile;
    ForEachLine(bytes, [&](std::string_view line) { isTooLarge |= line.size() > kLongestShownLine; });
    return isTooLarge;
}

std::optional<std::string> RemoveUnusedLines(std::string_view bytes) {
    bool isUnchanged = true;
    bool hasLineFeed = false;
    std::string kept = LinesWithEnds(bytes, [&](std::string_view line) {
        const bool isUsed = !IsCommentLine(line) && !IsBlankLine(line);
        isUnchanged = isUnchanged && isUsed;
        hasLineFeed = hasLineFeed || line.find('\n') != std::string_view::npos;
        return isUsed;
    });
    if (isUnchanged || hasLineFeed) return std::nullopt;
    return kept;
}

std::string WithLineEnds(std::string_view bytes) {
    return LinesWithEnds(bytes, [](std::string_view) { return true; });
}

} // namespace quillbay
