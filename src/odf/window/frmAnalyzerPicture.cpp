#include "common/Twips.h"
#include "common/window/LoadPicture.h"
#include "library/window/LibraryHost.h"
#include "odf/window/frmAnalyzer.h"
#include "ui_frmAnalyzer.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace quillbay {

namespace {

// Twips.
constexpr int kBoxLeft = 4320;
constexpr int kBoxTop = 3000;
constexpr int kBoxWidth = 4155;
constexpr int kBoxHeight = 2415;
constexpr int kLastLeft = 8512;
constexpr int kLastTop = 5482;
constexpr int kKeptInside = 30;

/// A hand that clicks may shake by so many pixels; what goes further is a drag.
constexpr int kClickSlack = 3;

/// Where an edge goes that is dragged by a point `start` inside the picture; all in twips.
int DraggedEdge(int edge, int pointer, int start, int extent) {
    const int moved = edge + pointer - start;
    return moved + extent > kKeptInside ? moved : edge;
}

/// Pixels.
int CentredEdge(int window, int picture) {
    return TwipsToPixels(PixelsToTwips(window) / 2 - PixelsToTwips(picture) / 2);
}

} // namespace

void frmAnalyzer::HidePicture() {
    ui_->picImages->hide();
    ui_->lblInvalidPic->hide();
}

void frmAnalyzer::PreviewPicture(const std::string& file) {
    const QImage image = LoadPicture(main_.GetServices().files, file, {"bmp", "jpeg", "gif"});
    ui_->picImages->setPixmap(QPixmap::fromImage(image));
    ui_->picImages->setVisible(!image.isNull());
    ui_->lblInvalidPic->setVisible(image.isNull());
    if (FullWindow) {
        ui_->picImages->resize(image.size());
        menuPicRightCenter_Click();
    }
    ShortenList();
}

bool frmAnalyzer::PictureEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        picImages_MouseDown(static_cast<const QMouseEvent&>(event));
        return true;
    case QEvent::MouseMove:
        picImages_MouseMove(static_cast<const QMouseEvent&>(event));
        return true;
    case QEvent::MouseButtonRelease:
        picImages_MouseUp(static_cast<const QMouseEvent&>(event));
        return true;
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter && key.key() != Qt::Key_Space)
            return false;
        if (!key.isAutoRepeat()) picImages_Click();
        return true;
    }
    case QEvent::ContextMenu: {
        // The mouse has its menu already when the button goes down.
        const auto& menu = static_cast<const QContextMenuEvent&>(event);
        if (menu.reason() != QContextMenuEvent::Mouse) ui_->menuPicRight->popup(menu.globalPos());
        return true;
    }
    default:
        return false;
    }
}

void frmAnalyzer::picImages_MouseDown(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    DragStartX = PixelsToTwips(at.x());
    DragStartY = PixelsToTwips(at.y());
    Dragged = false;
    if (event.button() == Qt::RightButton) ui_->menuPicRight->popup(event.globalPosition().toPoint());
}

void frmAnalyzer::picImages_MouseMove(const QMouseEvent& event) {
    if (!event.buttons().testFlag(Qt::LeftButton)) return;
    const QPoint at = event.position().toPoint();
    const QPoint start(TwipsToPixels(DragStartX), TwipsToPixels(DragStartY));
    if (!FullWindow) {
        if ((at - start).manhattanLength() > kClickSlack) Dragged = true;
        return;
    }
    if (at == start) return;
    const QRect box = ui_->picImages->geometry();
    const int left =
        DraggedEdge(PixelsToTwips(box.left()), PixelsToTwips(at.x()), DragStartX, PixelsToTwips(box.width()));
    const int top =
        DraggedEdge(PixelsToTwips(box.top()), PixelsToTwips(at.y()), DragStartY, PixelsToTwips(box.height()));
    ui_->picImages->move(TwipsToPixels(left), TwipsToPixels(top));
    Dragged = true;
    Moved = true;
}

void frmAnalyzer::picImages_MouseUp(const QMouseEvent& event) {
    const bool inside = ui_->picImages->rect().contains(event.position().toPoint());
    if (Moved) {
        const QPoint at = ui_->picImages->pos();
        ui_->picImages->move(std::min(at.x(), TwipsToPixels(kLastLeft)),
                             std::min(at.y(), TwipsToPixels(kLastTop)));
        Moved = false;
    }
    // A drag that ends outside the picture is over, too.
    if (event.button() == Qt::LeftButton && (inside || Dragged)) picImages_Click();
}

void frmAnalyzer::picImages_Click() {
    if (Dragged)
        Dragged = false;
    else if (FullWindow)
        ShowNormalWindow();
    else
        ShowFullWindow();
}

void frmAnalyzer::ShowFullWindow() {
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        SavedTooltips[i] = labels[i]->toolTip();
        labels[i]->setToolTip({});
    }
    ui_->picImages->resize(ui_->picImages->pixmap().size());
    menuPicRightCenter_Click();
    ui_->picImages->setFocus();
    for (QWidget* control : {static_cast<QWidget*>(ui_->TreeViewer), static_cast<QWidget*>(ui_->lstFiles),
                             static_cast<QWidget*>(ui_->lblSelectFolder)})
        control->hide();
    FullWindow = true;
    ui_->menuPicRightFullWindow->setText(QStringLiteral("Normal &window"));
    ui_->menuPicRightCenter->setEnabled(true);
}

void frmAnalyzer::ShowNormalWindow() {
    if (!FullWindow) return;
    const auto labels = StatisticsLabels();
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->setToolTip(SavedTooltips[i]);
    PlacePictureBox();
    ui_->TreeViewer->show();
    ui_->lstFiles->show();
    ui_->lstFiles->setFocus();
    FullWindow = false;
    ui_->lblSelectFolder->show();
    ui_->menuPicRightFullWindow->setText(QStringLiteral("Full &window"));
    ui_->menuPicRightCenter->setEnabled(false);
}

void frmAnalyzer::PlacePictureBox() {
    ui_->picImages->setGeometry(AtFont(TwipsToPixels(kBoxLeft)), AtFont(TwipsToPixels(kBoxTop)),
                                AtFont(TwipsToPixels(kBoxWidth)), AtFont(TwipsToPixels(kBoxHeight)));
}

void frmAnalyzer::menuPicRightCopy_Click() {
    QGuiApplication::clipboard()->setPixmap(ui_->picImages->pixmap());
}

void frmAnalyzer::menuPicRightCenter_Click() {
    ui_->picImages->move(CentredEdge(width(), ui_->picImages->width()),
                         CentredEdge(height(), ui_->picImages->height()));
}

} // namespace quillbay
