#include "odf/window/OdfTextBox.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include <memory>

namespace quillbay {

QString OdfTextBox::RawText() const {
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1String("\r\n"));
}

void OdfTextBox::SelectFirst(const QString& part, std::size_t line) {
    QTextCursor cursor(document());
    const auto found = static_cast<int>(document()->toRawText().indexOf(part));
    if (found >= 0) {
        cursor.setPosition(found);
        cursor.setPosition(found + static_cast<int>(part.size()), QTextCursor::KeepAnchor);
    } else {
        const QTextBlock block = document()->findBlockByNumber(static_cast<int>(line));
        cursor.setPosition((block.isValid() ? block : document()->lastBlock()).position());
    }
    setTextCursor(cursor);
    ensureCursorVisible();
}

void OdfTextBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly())
        insertPlainText(QStringLiteral("\n"));
    else
        QPlainTextEdit::keyPressEvent(event);
}

QMimeData* OdfTextBox::createMimeDataFromSelection() const {
    auto selected = std::make_unique<QMimeData>();
    selected->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    return selected.release();
}

} // namespace quillbay
