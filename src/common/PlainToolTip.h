#pragma once

#include <QString>

namespace quillbay {

/// `text` as a tooltip that shows exactly these characters: Qt would take a text that looks like markup for
/// markup. Long texts wrap. At most `kMaxToolTipCharacters` are shown.
QString PlainToolTip(const QString& text);

inline constexpr qsizetype kMaxToolTipCharacters = 500;

} // namespace quillbay
