#pragma once

#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

inline constexpr std::string_view kModInfoName = "ModInfo.txt";

/// Values longer than this are shown cut.
inline constexpr std::size_t kMaxShownCharacters = 10'000;

/// The raw values of a ModInfo.txt: bytes of the system code page, the first ModInfoParser::kMaxValueBytes of
/// each; none when no line has the field's prefix.
struct ModInfoValues {
    std::optional<std::string> author, description, version, other, otherHeading;
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

/// The five captions of the details panel as UTF-8, fallback texts included, cut to kMaxShownCharacters.
struct ModInfoCaptions {
    std::string author, description, version, other, otherHeading;
};

/// `values` of a present file; `std::nullopt` for an absent one. A value of blanks only counts as none.
ModInfoCaptions MakeModInfoCaptions(const std::optional<ModInfoValues>& values);

/// Reads and parses the file whatever its size, without holding it whole. No values on failure.
std::optional<ModInfoValues> ReadModInfo(const FileSystem& files, std::string_view path);

} // namespace quillbay
