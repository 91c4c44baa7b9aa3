#pragma once

#include <QPlainTextEdit>

namespace quillbay {

/// A text box for the contents of a file. It keeps apart what others make equal (a line end, U+2028 and a
/// line feed; a blank and U+00A0), also on the way through the clipboard.
class OdfTextBox : public QPlainTextEdit {
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

    /// Every character of the text, with CR LF for each line end.
    QString RawText() const;
    /// Selects the first occurrence of a part of one line (its U+2028 included), exact case; without one the
    /// caret goes to the start of the line of that number, from 0. Either is scrolled into view.
    void SelectFirst(const QString& part, std::size_t line);

protected:
    /// Shift+Enter is Enter: U+2028 would be a lone line feed in the file.
    void keyPressEvent(QKeyEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
};

} // namespace quillbay
