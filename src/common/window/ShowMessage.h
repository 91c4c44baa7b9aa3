#pragma once

#include <QIcon>
#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>
#include <system_error>

namespace quillbay {

inline constexpr char kProgramTitle[] = "Quillbay";

/// Shows a modal message box in plain text (never rich text) and returns the button that was pressed; a box
/// that is closed otherwise counts as No where there is one. `informative` is a second, smaller paragraph,
/// `details` a longer text that the user can unfold. `byEnter` is the default button; without one Qt chooses.
/// Windows show message boxes in no other way.
QMessageBox::StandardButton ShowMessage(QWidget* parent, const QString& text,
                                        const QString& title = QString::fromLatin1(kProgramTitle),
                                        QMessageBox::Icon icon = QMessageBox::NoIcon,
                                        QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                        const QString& informative = {}, const QString& details = {},
                                        QMessageBox::StandardButton byEnter = QMessageBox::NoButton);

/// True when the user answered Yes to a question with Yes and No. Where files go for good `byEnter` is No.
bool Confirmed(QWidget* parent, const QString& text, const QString& title,
               QMessageBox::Icon icon = QMessageBox::Question, const QString& informative = {},
               QMessageBox::StandardButton byEnter = QMessageBox::Yes);

/// Question icon, the program's title, and a button for each caption, the last of which Escape and Enter
/// stand for; the position of the one that was pressed.
int AskChoice(QWidget* parent, const QString& text, const QStringList& captions);

/// Shows a modal input box with an empty text box. What was typed, or nothing when the user cancelled.
std::optional<QString> AskText(QWidget* parent, const QString& prompt, const QString& title);

/// Critical-stop icon, title "Error!", OK.
void ShowError(QWidget* parent, const QString& text);

/// The same with a second button, which leads out of the trouble; true when that one was pressed.
bool ShowErrorWithWayOut(QWidget* parent, const QString& text, const QString& wayOut, const QIcon& icon);

/// The sentence, and below it the path that it is about and the system's reason, if there is one.
QString WithPath(const QString& sentence, std::string_view path, const std::error_code& error);
/// The system's reason alone.
QString Reason(const std::error_code& error);

} // namespace quillbay
