#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace quillbay {

/// Shows a modal input box with an empty text box. What was typed, or nothing when the user cancelled.
std::optional<QString> AskText(QWidget* parent, const QString& prompt, const QString& title);

} // namespace quillbay
