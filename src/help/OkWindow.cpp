#include "help/OkWindow.h"

#include <QKeyEvent>
#include <QPushButton>

namespace quillbay {

void OkWindow::SetOkButton(QPushButton& button) {
    ok_ = &button;
    connect(ok_, &QPushButton::clicked, this, &QWidget::close);
}

void OkWindow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        ok_->click();
        return;
    default:
        EffectWindow::keyPressEvent(event);
    }
}

} // namespace quillbay
