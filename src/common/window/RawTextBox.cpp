#include "common/window/RawTextBox.h"

#include "common/window/QtText.h"
#include "platform/TextLines.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include <memory>

namespace quillbay {

namespace {

/// What these boxes give each other: the text of a document in its own characters, as UTF-8.
constexpr char kRawFormat[] = "application/x-quillbay-text";

} // namespace

void RawTextBox::SetText(std::string_view text) {
    QStringList lines;
    ForEachLine(text, [&](std::string_view line) { lines += ShownLine(line); });
    setPlainText(lines.join(u'\n'));
}

std::string RawTextBox::Text() const {
    return FileText(document()->toRawText().replace(QChar::ParagraphSeparator, u'\n'));
}

EncodedText RawTextBox::FileBytes() const { return EncodeSystemText(Text() + "\r\n"); }

QString RawTextBox::ShownLine(std::string_view line) {
    return ToQString(line).replace(u'\n', QChar::LineSeparator);
}

std::string RawTextBox::FileText(QString shown) {
    return FromQString(shown.replace(u'\n', QLatin1String("\r\n")).replace(QChar::LineSeparator, u'\n'));
}

void RawTextBox::SelectFirst(std::string_view part, std::size_t line) {
    const QString shown = ShownLine(part);
    QTextCursor cursor(document());
    const auto found = static_cast<int>(document()->toRawText().indexOf(shown));
    if (found >= 0) {
        cursor.setPosition(found);
        cursor.setPosition(found + static_cast<int>(shown.size()), QTextCursor::KeepAnchor);
    } else {
        const QTextBlock block = document()->findBlockByNumber(static_cast<int>(line));
        cursor.setPosition((block.isValid() ? block : document()->lastBlock()).position());
    }
    setTextCursor(cursor);
    ensureCursorVisible();
}

void RawTextBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly())
        insertPlainText(QStringLiteral("\n"));
    else
        QPlainTextEdit::keyPressEvent(event);
}

QMimeData* RawTextBox::createMimeDataFromSelection() const {
    auto selected = std::make_unique<QMimeData>();
    const QString raw = textCursor().selectedText();
    selected->setText(QString(raw).replace(QChar::ParagraphSeparator, u'\n'));
    selected->setData(QLatin1String(kRawFormat), raw.toUtf8());
    return selected.release();
}

void RawTextBox::insertFromMimeData(const QMimeData* source) {
    QMimeData text;
    text.setText(source->hasFormat(QLatin1String(kRawFormat))
                     ? QString::fromUtf8(source->data(QLatin1String(kRawFormat)))
                     : source->text().replace(QChar::LineSeparator, u'\n'));
    QPlainTextEdit::insertFromMimeData(&text);
}

} // namespace quillbay
