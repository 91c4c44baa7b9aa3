#include "support/AnswerBoxesWindow.h"

#include <QApplication>
#include <QPushButton>
#include <QtTest>

namespace quillbay::test {

AnswerBoxes::AnswerBoxes() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(0);
}

AnswerBoxes& AnswerBoxes::Then(QMessageBox::StandardButton answer,
                               std::function<void(QMessageBox&)> whileOpen) {
    answers_.push_back({answer, std::move(whileOpen)});
    return *this;
}

void AnswerBoxes::Look() {
    const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || box == answered_ || !box->isVisible()) return;
    answered_ = box;
    seen_.push_back(
        {box->windowTitle(), box->text(), box->informativeText(), box->icon(), box->standardButtons()});

    Answer answer{QMessageBox::NoButton, {}};
    if (!answers_.empty()) {
        answer = std::move(answers_.front());
        answers_.pop_front();
    }
    if (answer.whileOpen) answer.whileOpen(*box);
    if (!box) return;
    if (QAbstractButton* button = box->button(answer.button))
        button->click();
    else
        box->reject();
}

bool WaitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

} // namespace quillbay::test
