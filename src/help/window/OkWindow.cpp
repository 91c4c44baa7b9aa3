#include "help/window/OkWindow.h"

#include "common/Version.h"
#include "common/window/QtText.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace quillbay {

void OkWindow::SetUp(QPushButton& ok, QLabel& version) {
    version.setText(QStringLiteral("Version ") + ToQString(kVersion));
    ok_ = &ok;
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
