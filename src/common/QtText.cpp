#include "common/QtText.h"

#include <QChar>
#include <QStringView>

#include <cstddef>

namespace quillbay {

namespace {

constexpr char16_t kEscapeBase = 0xDC00; // lone low surrogates never come from valid UTF-8

constexpr bool IsEscape(char16_t unit) { return unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF; }

/// The length of the valid UTF-8 sequence at `at`, 0 when there is none.
std::size_t SequenceLength(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0U) != 0x80) return 0;
    const unsigned second = byte(1);
    const bool outside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                         (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return outside ? 0 : length;
}

void AppendUtf8(std::string& out, char32_t code) {
    const auto add = [&](char32_t byte) { out += static_cast<char>(byte); };
    const auto rest = [&](int shift) { add(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) return add(code);
    if (code < 0x800) {
        add(0xC0 | (code >> 6));
    } else if (code < 0x10000) {
        add(0xE0 | (code >> 12));
        rest(6);
    } else {
        add(0xF0 | (code >> 18));
        rest(12);
        rest(6);
    }
    rest(0);
}

} // namespace

QString ToQString(std::string_view text) {
    // Decoded here and not by Qt, which drops a byte order mark at the start.
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = SequenceLength(text, at);
        const auto lead = static_cast<unsigned char>(text[at]);
        if (length == 0) {
            result += QChar(static_cast<char16_t>(kEscapeBase + lead));
            ++at;
            continue;
        }
        char32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t i = 1; i < length; ++i)
            code = (code << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
        result += QStringView(QChar::fromUcs4(code));
        at += length;
    }
    return result;
}

std::string FromQString(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (QChar::isHighSurrogate(unit) && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            AppendUtf8(result, QChar::surrogateToUcs4(unit, text[++at].unicode()));
        else if (IsEscape(unit))
            result += static_cast<char>(unit - kEscapeBase);
        else
            AppendUtf8(result, unit);
    }
    return result;
}

} // namespace quillbay
