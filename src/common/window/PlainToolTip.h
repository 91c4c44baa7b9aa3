#pragma once

#include <QString>

namespace quillbay {

inline constexpr qsizetype kMaxToolTipCharacters = 500;

/// `text` as a tooltip that shows exactly these characters: Qt would take a text that looks like markup for
/// markup. Long texts wrap. At most `longest` characters are shown.
QString PlainToolTip(const QString& text, qsizetype longest = kMaxToolTipCharacters);

} // namespace quillbay
