#include "common/window/PlainToolTip.h"

namespace quillbay {

QString PlainToolTip(const QString& text, qsizetype longest) {
    if (text.isEmpty()) {
        return {};
    }
    QString shown = text;
    if (shown.size() > longest) {
        shown.truncate(longest);
        if (shown.back().isHighSurrogate()) {
            shown.chop(1);
        }
        shown += QChar(0x2026);
    }
    return QStringLiteral("<div style=\"white-space: pre-wrap\">%1</div>").arg(shown.toHtmlEscaped());
}

} // namespace quillbay
