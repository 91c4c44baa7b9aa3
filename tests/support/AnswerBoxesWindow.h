#pragma once

#include <QtTest>
#include <QtWidgets>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace quillbay::test {

struct SeenBox {
    QString title;
    QString text; ///< of an input box: its prompt
    QString informative;
    QMessageBox::Icon icon;
};

/// While it lives, every message box and input box that opens is written down and answered: with the next of
/// the answers given, and when they are used up with Escape. `whileOpen` runs before the answer.
class AnswerBoxes {
public:
    AnswerBoxes();

    /// With a text it answers an input box, too.
    AnswerBoxes& Then(QMessageBox::StandardButton answer, std::function<void(QMessageBox&)> whileOpen = {},
                      const std::optional<QString>& text = {}) {
        answers_.push_back({answer, std::move(whileOpen), text});
        return *this;
    }
    /// Types the text into an input box and confirms it.
    AnswerBoxes& ThenType(const QString& text) {
        answers_.push_back({QMessageBox::NoButton, {}, text});
        return *this;
    }
    const std::vector<SeenBox>& Seen() const { return seen_; }

private:
    struct Answer {
        QMessageBox::StandardButton button = QMessageBox::NoButton;
        std::function<void(QMessageBox&)> whileOpen;
        std::optional<QString> text;
    };

    void Look();

    QTimer timer_;
    QPointer<QDialog> answered_;
    std::deque<Answer> answers_;
    std::vector<SeenBox> seen_;
};

/// Lets events run until `condition` holds; false after ten seconds.
bool WaitFor(const std::function<bool()>& condition);

} // namespace quillbay::test
