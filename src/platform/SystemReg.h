#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// Looks for one string value in the text of a Wine registry file (`system.reg`), which is handed in piece by
/// piece. The plain key goes before its twin in the 32-bit view (`Software\Wow6432Node\...`). Letter case of
/// key and value name is ignored. A text of another format holds no value; a damaged line is passed over.
///
/// The format ("WINE REGISTRY Version 2"): a line `[Software\\Some key] 1234` begins a key, `"Name"="text"`
/// is a string value, `@="text"` the nameless one, `"Name"=dword:...` and the like are other types. `\\`,
/// `\"`, `\n`, octal `\0` and UTF-16 `\x20ac` stand for one character each.
class SystemRegSearch {
public:
    /// A longer line (there are such among binary values) is passed over.
    static constexpr std::size_t kLongestLine = std::size_t{64} * 1024;

    SystemRegSearch(std::string_view key, std::string_view valueName);

    /// False when what follows cannot change the outcome.
    bool Feed(std::string_view bytes);

    /// True inside a wanted key, and in a line that has not ended and may begin one.
    bool IsInKey() const { return section_ || partialLine_.starts_with('['); }

    /// The wanted keys: the plain one, and that of the 32-bit view (empty for none).
    const std::array<std::string, 2>& Keys() const { return keys_; }

    /// The key that a line begins; none for another line.
    static std::optional<std::string> KeyOf(std::string_view line);

    /// The value as UTF-8, cut at its first NUL; to be asked once, after the last piece.
    std::optional<std::string> Finish();

private:
    enum class State { Header, Body, Over };

    void TakeLine(std::string_view line);
    void TakeSection(std::string_view line);
    void TakeValue(std::string_view line);

    std::array<std::string, 2> keys_;
    std::array<std::optional<std::string>, 2> found_;
    std::string valueName_;
    std::string partialLine_;
    bool lineTooLong_ = false;
    std::optional<std::size_t> section_; ///< which of `keys_` the lines belong to
    State state_ = State::Header;
};

} // namespace quillbay
