#pragma once

#include "platform/CodePage.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// Values longer than this are shown cut.
inline constexpr std::size_t kMaxShownCharacters = 10'000;

/// The raw values of a ModInfo.txt: bytes of the system code page, the first ModInfoParser::kMaxValueBytes of
/// each; none when no line has the field's prefix.
struct ModInfoValues {
    std::optional<std::string> author, description, version, other, otherHeading;
    friend bool operator==(const ModInfoValues&, const ModInfoValues&) = default;
};

/// Reads ModInfo.txt piece by piece: a line ends at CR LF or a lone CR (a lone LF stays inside it), a field
/// line begins with its exact prefix ("Author: "), the last line of a field wins. What it holds does not grow
/// with the length of a line.
class ModInfoParser {
public:
    static constexpr std::size_t kMaxValueBytes = 64 * 1024;

    void Feed(std::string_view bytes);
    /// Ends the last line. The parser is used up.
    ModInfoValues Finish();

private:
    void Keep(std::string_view bytes);
    void EndLine();

    ModInfoValues values_;
    std::string line_; ///< the beginning of the current line, as much as a value can need
    bool afterCr_ = false;
};

/// Five texts as UTF-8: the captions of the details panel, fallback texts included, cut to
/// kMaxShownCharacters; or the values that a user typed.
struct ModInfoCaptions {
    std::string author, description, version, other, otherHeading;
    friend bool operator==(const ModInfoCaptions&, const ModInfoCaptions&) = default;
};

/// `values` of a present file; `std::nullopt` for an absent one. A value of blanks only counts as none.
ModInfoCaptions MakeModInfoCaptions(const std::optional<ModInfoValues>& values);

/// The names of the fields whose caption is cut, so that whoever sees it does not see the whole value.
std::vector<std::string_view> CutFields(const ModInfoValues& values);

/// A ModInfo.txt of these values: five field lines with an empty line between each two, every one ending in
/// CR LF. The values stand as they are; a line end in one of them ends its line in the file too.
EncodedText EncodeModInfo(const ModInfoCaptions& values);

/// Reads and parses the file whatever its size, without holding it whole. No values on failure.
std::optional<ModInfoValues> ReadModInfo(const FileSystem& files, std::string_view path);

} // namespace quillbay
