#include "platform/SystemReg.h"

#include "platform/CaseFold.h"
#include "platform/NumberText.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr std::string_view kHeader = "WINE REGISTRY Version 2";
constexpr std::string_view kSoftware = "Software\\";
constexpr std::string_view kView32 = "Wow6432Node\\";

constexpr std::pair<char, char16_t> kEscapes[] = {
    {'a', u'\a'}, {'b', u'\b'}, {'e', u'\x1b'}, {'f', u'\f'},
    {'n', u'\n'}, {'r', u'\r'}, {'t', u'\t'},   {'v', u'\v'},
};

int DigitOf(char c, int base) {
    int digit = base;
    if (IsDigit(c)) digit = c - '0';
    if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    return digit < base ? digit : -1;
}

/// Reads up to `maxDigits` digits; `at` goes behind them. None when there is no digit.
std::optional<char16_t> ReadNumber(std::string_view text, std::size_t& at, int base, std::size_t maxDigits) {
    const std::size_t start = at;
    int number = 0;
    while (at < text.size() && at - start < maxDigits && DigitOf(text[at], base) >= 0) {
        number = number * base + DigitOf(text[at++], base);
    }
    if (at == start) return std::nullopt;
    return static_cast<char16_t>(number);
}

/// One escaped character; `at` stands behind its backslash.
char16_t ReadEscape(std::string_view text, std::size_t& at) {
    if (const auto octal = ReadNumber(text, at, 8, 3)) return *octal;
    const char c = text[at++];
    if (c == 'x') return ReadNumber(text, at, 16, 4).value_or(u'x');
    const auto* escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                      [c](const auto& known) { return known.first == c; });
    if (escape != std::end(kEscapes)) return escape->second;
    return static_cast<unsigned char>(c);
}

void AppendUtf16(std::u16string& text, char32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
}

std::string ToUtf8(std::u16string_view text) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t unit = text[i];
        if (unit >= 0xD800 && unit < 0xE000) {
            const char32_t next = i + 1 < text.size() ? text[i + 1] : char16_t{0};
            const bool pair = unit < 0xDC00 && next >= 0xDC00 && next < 0xE000;
            unit = pair ? 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00) : kReplacement;
            if (pair) ++i;
        }
        AppendUtf8(utf8, unit);
    }
    return utf8;
}

/// The text up to `end`, which `at` goes behind; none when the line ends before.
std::optional<std::string> ReadText(std::string_view line, std::size_t& at, char end) {
    std::u16string text;
    while (at < line.size()) {
        if (line[at] == end) {
            ++at;
            return ToUtf8(text);
        }
        if (line[at] == '\\') {
            if (++at == line.size()) return std::nullopt;
            text.push_back(ReadEscape(line, at));
        } else {
            const auto character = ReadUtf8(line, at);
            AppendUtf16(text, character.codePoint);
            at += character.length;
        }
    }
    return std::nullopt;
}

/// False when the ASCII characters at the beginning tell that the escaped text is not `key`, so that it need
/// not be decoded: hardly any key of a registry passes.
bool MayBe(std::string_view escaped, std::string_view key) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    std::size_t at = 0;
    for (const char expected : key) {
        if (at == escaped.size()) return false;
        const char c = escaped[at++];
        if (c == '\\') {
            if (at == escaped.size() || escaped[at] != '\\') return true;
            ++at;
        }
        if (!isAscii(c) || !isAscii(expected)) return true;
        if (lower(c) != lower(expected)) return false;
    }
    return !key.empty();
}

/// How many bytes lie before the next line that begins a key, where `bytes` begins a line; without such a
/// line, before the last line, which may go on behind `bytes`.
std::size_t BytesBeforeKey(std::string_view bytes) {
    for (auto at = bytes.find('['); at != std::string_view::npos; at = bytes.find('[', at + 1)) {
        if (at == 0 || bytes[at - 1] == '\n') return at;
    }
    return bytes.rfind('\n') + 1; // npos + 1 is 0
}

} // namespace

SystemRegSearch::SystemRegSearch(std::string_view key, std::string_view valueName) : valueName_(valueName) {
    keys_[0] = key;
    if (key.size() > kSoftware.size() && StartsFolded(key, kSoftware)) {
        keys_[1] = std::string(kSoftware).append(kView32).append(key.substr(kSoftware.size()));
    }
}

bool SystemRegSearch::Feed(std::string_view bytes) {
    while (!bytes.empty() && state_ != State::Over) {
        if (state_ == State::Body && !section_ && partialLine_.empty() && !lineTooLong_) {
            bytes.remove_prefix(BytesBeforeKey(bytes));
            if (bytes.empty()) break;
        }
        const auto end = bytes.find('\n');
        const auto part = bytes.substr(0, end);
        lineTooLong_ = lineTooLong_ || partialLine_.size() + part.size() > kLongestLine;
        if (end == std::string_view::npos) {
            if (!lineTooLong_) partialLine_.append(part);
            break;
        }
        if (lineTooLong_) {
            TakeLine({});
        } else if (partialLine_.empty()) {
            TakeLine(part);
        } else {
            TakeLine(partialLine_.append(part));
        }
        partialLine_.clear();
        lineTooLong_ = false;
        bytes.remove_prefix(end + 1);
    }
    return state_ != State::Over;
}

std::optional<std::string> SystemRegSearch::Finish() {
    if (state_ != State::Over && !lineTooLong_) TakeLine(partialLine_);
    for (auto& value : found_) {
        if (value) return value->substr(0, value->find('\0'));
    }
    return std::nullopt;
}

std::optional<std::string> SystemRegSearch::KeyOf(std::string_view line) {
    std::size_t at = 1;
    auto key = line.starts_with('[') ? ReadText(line, at, ']') : std::nullopt;
    if (key && key->empty()) key.reset();
    return key;
}

void SystemRegSearch::TakeLine(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (state_ == State::Header) {
        state_ = line == kHeader ? State::Body : State::Over;
    } else if (line.starts_with('[')) {
        TakeSection(line);
    } else if (section_ && (line.starts_with('"') || line.starts_with('@'))) {
        TakeValue(line);
    }
}

void SystemRegSearch::TakeSection(std::string_view line) {
    section_.reset();
    if (std::ranges::none_of(keys_, [line](const auto& key) { return MayBe(line.substr(1), key); })) return;
    const auto key = KeyOf(line);
    if (!key) return;
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        if (EqualFolded(*key, keys_[i])) section_ = i;
    }
}

void SystemRegSearch::TakeValue(std::string_view line) {
    std::size_t at = 1;
    const auto name = line.front() == '"' ? ReadText(line, at, '"') : std::string();
    if (!name || !EqualFolded(*name, valueName_)) return;
    if (line.substr(at, 2) != "=\"") return;
    at += 2;
    auto value = ReadText(line, at, '"');
    if (!value || at != line.size()) return;
    found_[*section_] = std::move(value);
    if (*section_ == 0) state_ = State::Over;
}

} // namespace quillbay
