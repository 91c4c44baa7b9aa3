#include "common/window/QtText.h"

#include "platform/Utf8.h"

#include <QChar>
#include <QDir>
#include <QStringView>

namespace quillbay {

namespace {

constexpr char32_t kEscapeBase = 0xDC00; // lone low surrogates never come from valid UTF-8

constexpr bool IsEscape(char16_t unit) { return unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF; }

} // namespace

QString ToQString(std::string_view text) {
    // Decoded here and not by Qt, which drops a byte order mark at the start.
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = ReadUtf8(text, at);
        result += QStringView(
            QChar::fromUcs4(character.valid ? character.codePoint : kEscapeBase + character.codePoint));
        at += character.length;
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

QString ShownPath(std::string_view path) {
    QString shown = ToQString(path);
    // The program puts backslashes below a root of POSIX, too.
    if (shown.startsWith(u'/')) shown.replace(u'\\', u'/');
    return QDir::toNativeSeparators(shown);
}

} // namespace quillbay
