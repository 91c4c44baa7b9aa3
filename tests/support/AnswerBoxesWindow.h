#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>
#include <vector>

namespace quillbay::test {

struct SeenBox {
    QString title;
    QString text;
    QString informative;
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
};

/// While it lives, every message box that opens is written down and answered: with the next of the answers
/// given, and when they are used up with Escape. `whileOpen` runs before the answer.
class AnswerBoxes {
public:
    AnswerBoxes();

    AnswerBoxes& Then(QMessageBox::StandardButton answer, std::function<void(QMessageBox&)> whileOpen = {});
    const std::vector<SeenBox>& Seen() const { return seen_; }

private:
    struct Answer {
        QMessageBox::StandardButton button;
        std::function<void(QMessageBox&)> whileOpen;
    };

    void Look();

    QTimer timer_;
    QPointer<QMessageBox> answered_;
    std::deque<Answer> answers_;
    std::vector<SeenBox> seen_;
};

/// Lets events run until `condition` holds; false after ten seconds.
bool WaitFor(const std::function<bool()>& condition);

} // namespace quillbay::test
