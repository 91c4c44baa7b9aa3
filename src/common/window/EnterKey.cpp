#include "common/window/EnterKey.h"

#include <QKeyEvent>
#include <QPushButton>

namespace quillbay {

bool PressFocusedButton(const QWidget& window, const QKeyEvent& event) {
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
    auto* button = qobject_cast<QPushButton*>(window.focusWidget());
    if (!button) return false;
    if (!event.isAutoRepeat()) button->click();
    return true;
}

} // namespace quillbay
