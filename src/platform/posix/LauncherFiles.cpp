#include "platform/posix/LauncherFiles.h"

#include "platform/CaseFold.h"
#include "platform/NumberText.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace quillbay {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr char32_t kReplacement = 0xFFFD;

constexpr std::pair<char, char> kControls[] = {
    {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'b', '\b'}, {'f', '\f'}};
/// Escapes of a character by its number, and how many hexadecimal digits follow.
constexpr std::pair<char, std::size_t> kNumbers[] = {{'x', 2}, {'u', 4}, {'U', 8}};

bool IsHighSurrogate(char32_t code) { return code >= 0xD800 && code < 0xDC00; }
bool IsLowSurrogate(char32_t code) { return code >= 0xDC00 && code < 0xE000; }

/// The number behind `\x`, `\u` or `\U`, whose letter is at `at`; `at` goes behind it. None when it is none.
std::optional<char32_t> ReadNumber(std::string_view text, std::size_t& at) {
    if (at >= text.size()) return std::nullopt;
    for (const auto& [letter, digits] : kNumbers) {
        if (text[at] != letter || text.size() - at <= digits) continue;
        const auto code = ParseNumber<std::uint32_t>(text.substr(at + 1, digits), 16);
        if (!code) return std::nullopt;
        at += 1 + digits;
        return static_cast<char32_t>(*code);
    }
    return std::nullopt;
}

/// Appends the escaped character whose first byte behind the backslash is at `at`.
void ReadEscape(std::string_view text, std::size_t& at, std::string& decoded) {
    auto code = ReadNumber(text, at);
    if (!code) {
        const char c = text[at++];
        const auto* known = std::ranges::find(kControls, c, &std::pair<char, char>::first);
        decoded += known != std::end(kControls) ? known->second : c;
        return;
    }
    if (IsHighSurrogate(*code) && at < text.size() && text[at] == '\\') {
        std::size_t next = at + 1;
        const auto low = ReadNumber(text, next);
        if (low && IsLowSurrogate(*low)) {
            code = 0x10000 + ((*code - 0xD800) << 10) + (*low - 0xDC00);
            at = next;
        }
    }
    const bool none = *code > 0x10FFFF || IsHighSurrogate(*code) || IsLowSurrogate(*code);
    AppendUtf8(decoded, none ? kReplacement : *code);
}

/// The text in double quotes that begins at `at`, which goes behind it; none when it does not end.
std::optional<std::string> ReadQuoted(std::string_view text, std::size_t& at) {
    std::string decoded;
    for (++at; at < text.size();) {
        const char c = text[at++];
        if (c == '"') return decoded;
        if (c != '\\') {
            decoded += c;
        } else if (at < text.size()) {
            ReadEscape(text, at, decoded);
        }
    }
    return std::nullopt;
}

/// The first byte from `at` on that is no blank; the size when there is none.
std::size_t SkipBlanks(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of(kBlanks, at), text.size());
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(SkipBlanks(text, 0));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// A YAML scalar whose lines were joined already.
std::string YamlScalar(std::string_view text) {
    if (text.starts_with('"')) {
        std::size_t at = 0;
        return ReadQuoted(text, at).value_or(std::string());
    }
    if (!text.starts_with('\'')) return std::string(Trimmed(text.substr(0, text.find(" #"))));
    std::string decoded;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\'' && ++at < text.size() && text[at] != '\'') return decoded;
        if (at < text.size()) decoded += text[at];
    }
    return decoded;
}

/// Takes one line off the front of `text`.
std::string_view TakeLine(std::string_view& text) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

std::size_t IndentOf(std::string_view line) { return std::min(line.find_first_not_of(' '), line.size()); }

} // namespace

std::vector<std::string> SteamLibraries(std::string_view vdf) {
    std::vector<std::string> libraries;
    std::optional<std::string> key;
    int depth = 0;
    for (std::size_t at = SkipBlanks(vdf, 0); at < vdf.size(); at = SkipBlanks(vdf, at)) {
        const char c = vdf[at];
        if (c == '{' || c == '}') {
            depth += c == '{' ? 1 : -1;
            key.reset();
            ++at;
            continue;
        }
        if (vdf.substr(at).starts_with("//")) {
            at = std::min(vdf.find('\n', at), vdf.size());
            continue;
        }
        std::optional<std::string> word;
        if (c == '"') {
            word = ReadQuoted(vdf, at);
            if (!word) break;
        } else {
            const auto end = std::min(vdf.find_first_of(" \t\r\n{}\"", at), vdf.size());
            word = vdf.substr(at, end - at);
            at = end;
        }
        if (!key) {
            key = std::move(word);
            continue;
        }
        if ((depth == 1 && IsDigits(*key)) || (depth == 2 && EqualFolded(*key, "path")))
            libraries.push_back(std::move(*word));
        key.reset();
    }
    return libraries;
}

std::vector<std::string> JsonTexts(std::string_view json, std::string_view key) {
    std::vector<std::string> texts;
    std::size_t at = 0;
    while ((at = json.find('"', at)) != std::string_view::npos) {
        const auto name = ReadQuoted(json, at);
        if (!name) break;
        at = SkipBlanks(json, at);
        if (*name != key || at == json.size() || json[at] != ':') continue;
        at = SkipBlanks(json, at + 1);
        if (at == json.size() || json[at] != '"') continue;
        auto text = ReadQuoted(json, at);
        if (!text) break;
        texts.push_back(std::move(*text));
    }
    return texts;
}

std::vector<std::string> YamlTexts(std::string_view yaml, std::string_view key) {
    std::vector<std::string> texts;
    while (!yaml.empty()) {
        const auto line = TakeLine(yaml);
        const auto indent = IndentOf(line);
        auto rest = line.substr(indent);
        if (!rest.starts_with(key)) continue;
        rest.remove_prefix(key.size());
        if (!rest.starts_with(':') || kBlanks.find(rest.substr(1, 1)) == std::string_view::npos) continue;
        std::string joined(Trimmed(rest.substr(1)));
        // A long text goes on in lines that are indented more; a backslash glues them without a blank.
        while (!yaml.empty()) {
            auto after = yaml;
            const auto more = TakeLine(after);
            if (Trimmed(more).empty() || IndentOf(more) <= indent) break;
            const bool glued = joined.starts_with('"') && joined.ends_with('\\');
            if (glued) joined.pop_back();
            if (!glued && !joined.empty()) joined += ' ';
            joined += Trimmed(more);
            yaml = after;
        }
        texts.push_back(YamlScalar(joined));
    }
    return texts;
}

} // namespace quillbay
