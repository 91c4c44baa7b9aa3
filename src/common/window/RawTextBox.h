#pragma once

#include "platform/CodePage.h"

#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace quillbay {

/// A text box for the text of a file, as UTF-8. It keeps apart what others make equal, also on the way
/// through the clipboard: a line end (CR LF or CR) and a lone LF, which is shown as a break of the line, too;
/// a blank and U+00A0. What is typed, or pasted from elsewhere, never becomes a lone LF.
class RawTextBox : public QPlainTextEdit {
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

    /// Shows the text but for the line end at its end.
    void SetText(std::string_view text);
    /// Every character of the text, with CR LF for each line end.
    std::string Text() const;
    /// Text() as bytes of the system code page, with CR LF at its end, too.
    EncodedText FileBytes() const;
    /// Both for one line, as every text box shows it: a lone LF is shown as U+2028. Line ends that the user
    /// typed become CR LF.
    static QString ShownLine(std::string_view line);
    static std::string FileText(QString shown);
    /// Selects the first occurrence of a part of one line, exact case; without one the caret goes to the
    /// start of the line of that number, from 0. Either is scrolled into view.
    void SelectFirst(std::string_view part, std::size_t line);

protected:
    /// Shift+Enter is Enter.
    void keyPressEvent(QKeyEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;
};

} // namespace quillbay
