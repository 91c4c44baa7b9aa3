#include "platform/CaseFold.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <windows.h>

namespace quillbay {

namespace {

constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
constexpr char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// The mapping that the system's file names have, whatever the user's language is.
char32_t UpperPoint(char32_t point) {
    // Letters of the game's and its mods' names lie in the basic plane; the others keep their case, as on
    // NTFS.
    if (point >= 0x10000) return point;
    const auto letter = static_cast<wchar_t>(point);
    wchar_t upper = letter;
    if (LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, &letter, 1, &upper, 1, nullptr, nullptr, 0) !=
        1)
        return point;
    return upper < 0x80 ? point : upper;
}

} // namespace

std::string FoldCase(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    for (std::size_t at = 0; at < name.size();) {
        if (IsAscii(name[at])) {
            folded.push_back(AsciiUpper(name[at++]));
            continue;
        }
        const Utf8Character c = ReadUtf8(name, at);
        if (c.valid) {
            AppendUtf8(folded, UpperPoint(c.codePoint));
        } else {
            folded.push_back(name[at]);
        }
        at += c.length;
    }
    return folded;
}

bool EqualFolded(std::string_view a, std::string_view b) {
    const auto [endA, endB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return IsAscii(x) && IsAscii(y) && AsciiUpper(x) == AsciiUpper(y);
    });
    if (endA == a.end() || endB == b.end()) return endA == a.end() && endB == b.end();
    if (IsAscii(*endA) && IsAscii(*endB)) return false;
    return FoldCase(std::string_view(endA, a.end())) == FoldCase(std::string_view(endB, b.end()));
}

bool LessFolded(std::string_view a, std::string_view b) {
    // The order of UTF-8 bytes is that of code points.
    const int order = FoldCase(a).compare(FoldCase(b));
    return order != 0 ? order < 0 : a < b;
}

} // namespace quillbay
