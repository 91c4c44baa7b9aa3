#include "common/window/OnlyEscape.h"

#include <QApplication>
#include <QKeyEvent>

namespace quillbay {

OnlyEscape::OnlyEscape() { qApp->installEventFilter(this); }

bool OnlyEscape::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) isStopped_ = true;
        return true;
    case QEvent::Close:
        isStopped_ = true;
        event->ignore();
        return true;
    case QEvent::Timer: // a timer goes on where it stood
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        event->ignore();
        return true;
    default:
        return false;
    }
}

} // namespace quillbay
