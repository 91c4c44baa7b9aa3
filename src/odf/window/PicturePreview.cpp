#include "odf/window/PicturePreview.h"

#include "common/Twips.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace quillbay {

namespace {

/// The release of a drag puts an edge that is further back to this.
constexpr QPoint kLastPlace{TwipsToPixels(8512), TwipsToPixels(5482)};
/// A drag leaves so much of the picture inside the window, and a pixel.
constexpr int kKeptInside = TwipsToPixels(30);
/// A hand that clicks may shake by so many pixels; what goes further is a drag.
constexpr int kClickSlack = 3;

int DraggedEdge(int edge, int by, int extent) { return edge + by + extent > kKeptInside ? edge + by : edge; }

} // namespace

void PicturePreview::Show(const QImage& image) {
    setPixmap(QPixmap::fromImage(image));
    setToolTip(QStringLiteral("%1 x %2 pixels").arg(image.width()).arg(image.height()));
    setVisible(!image.isNull());
    if (!fillsWindow_) return;
    resize(image.size());
    Center();
}

void PicturePreview::SetBox(const QRect& box) {
    box_ = box;
    if (!fillsWindow_) setGeometry(box);
}

void PicturePreview::Click() {
    if (std::exchange(dragged_, false)) return;
    if (fillsWindow_)
        LeaveFullWindow();
    else
        FillWindow();
}

void PicturePreview::FillWindow() {
    fillsWindow_ = true;
    resize(pixmap().size());
    Center();
    setFocus();
    emit FullWindowChanged(true);
}

void PicturePreview::LeaveFullWindow() {
    if (!fillsWindow_) return;
    fillsWindow_ = false;
    setGeometry(box_);
    emit FullWindowChanged(false);
}

void PicturePreview::Center() {
    move((window()->width() - width()) / 2, (window()->height() - height()) / 2);
}

void PicturePreview::CopyToClipboard() { QGuiApplication::clipboard()->setPixmap(pixmap()); }

void PicturePreview::mousePressEvent(QMouseEvent* event) {
    dragStart_ = event->position().toPoint();
    dragged_ = false;
    if (event->button() == Qt::RightButton) emit MenuRequested(event->globalPosition().toPoint());
}

void PicturePreview::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) return;
    const QPoint by = event->position().toPoint() - dragStart_;
    if (!fillsWindow_) {
        if (by.manhattanLength() > kClickSlack) dragged_ = true;
    } else if (!by.isNull()) {
        move(DraggedEdge(x(), by.x(), width()), DraggedEdge(y(), by.y(), height()));
        dragged_ = true;
    }
}

void PicturePreview::mouseReleaseEvent(QMouseEvent* event) {
    const bool inside = rect().contains(event->position().toPoint());
    if (dragged_ && fillsWindow_) move(std::min(x(), kLastPlace.x()), std::min(y(), kLastPlace.y()));
    // A drag that ends outside the picture is over, too.
    if (event->button() == Qt::LeftButton && (inside || dragged_)) Click();
}

void PicturePreview::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space)
        QLabel::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        Click();
}

void PicturePreview::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its menu already when the button goes down.
    if (event->reason() != QContextMenuEvent::Mouse) emit MenuRequested(event->globalPos());
}

} // namespace quillbay
