#include "support/AnswerBoxesWindow.h"

#include <QApplication>
#include <QInputDialog>
#include <QPushButton>
#include <QtTest>

namespace quillbay::test {

AnswerBoxes::AnswerBoxes() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(0);
}

AnswerBoxes& AnswerBoxes::Then(QMessageBox::StandardButton answer,
                               std::function<void(QMessageBox&)> whileOpen) {
    answers_.push_back({answer, std::move(whileOpen), {}});
    return *this;
}

AnswerBoxes& AnswerBoxes::ThenType(const QString& text) {
    answers_.push_back({QMessageBox::NoButton, {}, text});
    return *this;
}

void AnswerBoxes::Look() {
    const QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || dialog == answered_ || !dialog->isVisible()) return;
    const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(dialog);
    auto* input = qobject_cast<QInputDialog*>(dialog);
    if (!box && !input) return;
    answered_ = dialog;

    Answer answer;
    if (!answers_.empty()) {
        answer = std::move(answers_.front());
        answers_.pop_front();
    }
    if (box) {
        AnswerBox(box, answer);
        return;
    }
    seen_.push_back(
        {input->windowTitle(), input->labelText(), {}, QMessageBox::NoIcon, QMessageBox::NoButton});
    if (answer.text) {
        input->setTextValue(*answer.text);
        input->accept();
    } else {
        input->reject();
    }
}

void AnswerBoxes::AnswerBox(const QPointer<QMessageBox>& box, const Answer& answer) {
    seen_.push_back(
        {box->windowTitle(), box->text(), box->informativeText(), box->icon(), box->standardButtons()});
    if (answer.whileOpen) answer.whileOpen(*box);
    if (!box) return;
    if (QAbstractButton* button = box->button(answer.button))
        button->click();
    else
        box->reject();
}

bool WaitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

} // namespace quillbay::test
