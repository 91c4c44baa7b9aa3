#include "support/AnswerBoxesWindow.h"

namespace quillbay::test {

AnswerBoxes::AnswerBoxes() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(0);
}

void AnswerBoxes::Look() {
    const QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    auto* box = qobject_cast<QMessageBox*>(dialog);
    auto* input = qobject_cast<QInputDialog*>(dialog);
    if ((!box && !input) || dialog == answered_ || !dialog->isVisible()) return;
    answered_ = dialog;
    Answer answer;
    if (!answers_.empty()) {
        answer = std::move(answers_.front());
        answers_.pop_front();
    }
    if (box)
        seen_.push_back({box->windowTitle(), box->text(), box->informativeText(), box->icon()});
    else
        seen_.push_back({input->windowTitle(), input->labelText(), {}, QMessageBox::NoIcon});
    if (box && answer.whileOpen) answer.whileOpen(*box);
    if (!dialog) return;
    if (QAbstractButton* button = box ? box->button(answer.button) : nullptr) {
        button->click();
    } else if (input && answer.text) {
        input->setTextValue(*answer.text);
        input->accept();
    } else {
        dialog->reject();
    }
}

bool WaitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

} // namespace quillbay::test
