#include "common/window/ClickLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace quillbay {

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()) &&
        !hasSelectedText())
        emit Clicked();
}

void ClickLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space)
        QLabel::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        emit Clicked();
}

void ClickLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    Underline(true);
}

void ClickLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    Underline(false);
}

void ClickLabel::Underline(bool on) {
    QFont underlined = font();
    underlined.setUnderline(on);
    setFont(underlined);
}

} // namespace quillbay
