#include "platform/CaseFold.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <compare>
#include <cwctype>
#include <locale.h>

namespace quillbay {

namespace {

constexpr char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// The C library's own table of letters, whatever language the user has; null where it does not have it.
locale_t UnicodeLocale() {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
    return locale;
}

char32_t UpperCase(char32_t codePoint) {
    const locale_t locale = UnicodeLocale();
    if (locale == locale_t{}) return codePoint;
    const auto upper = static_cast<char32_t>(::towupper_l(static_cast<wint_t>(codePoint), locale));
    return upper < 0x80 ? codePoint : upper;
}

/// Appends the folded form of the character at `at`; returns its length in `name`.
std::size_t AppendFolded(std::string& folded, std::string_view name, std::size_t at) {
    if (IsAscii(name[at])) {
        folded.push_back(UpperAscii(name[at]));
        return 1;
    }
    const auto character = ReadUtf8(name, at);
    if (character.valid) {
        AppendUtf8(folded, UpperCase(character.codePoint));
    } else {
        folded.push_back(name[at]);
    }
    return character.length;
}

/// Where the folded forms must be made: at the first byte that is not ASCII in both, or differs.
struct Divergence {
    std::size_t at;
    bool decided; ///< the characters there (or an end) decide without the rest
};

Divergence FindDivergence(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (!IsAscii(a[i]) || !IsAscii(b[i])) return {i, false};
        if (UpperAscii(a[i]) != UpperAscii(b[i])) return {i, true};
    }
    return {common, true};
}

std::strong_ordering CompareAt(std::string_view a, std::string_view b, std::size_t at) {
    if (at == a.size() || at == b.size()) return a.size() <=> b.size();
    return static_cast<unsigned char>(UpperAscii(a[at])) <=> static_cast<unsigned char>(UpperAscii(b[at]));
}

std::strong_ordering CompareFolded(std::string_view a, std::string_view b) {
    const auto [at, decided] = FindDivergence(a, b);
    if (decided) return CompareAt(a, b, at);
    return FoldCase(a.substr(at)) <=> FoldCase(b.substr(at));
}

} // namespace

std::string FoldCase(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    for (std::size_t at = 0; at < name.size();)
        at += AppendFolded(folded, name, at);
    return folded;
}

bool EqualFolded(std::string_view a, std::string_view b) { return CompareFolded(a, b) == 0; }

bool LessFolded(std::string_view a, std::string_view b) {
    const auto order = CompareFolded(a, b);
    return order != 0 ? order < 0 : a < b;
}

} // namespace quillbay
