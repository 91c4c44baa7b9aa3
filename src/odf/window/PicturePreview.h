#pragma once

#include <QLabel>

namespace quillbay {

/// A picture over its window: in a box, where it is cut off, or in its own size in the middle of the whole
/// window, where it can be dragged. A click that ends no drag, Enter and the blank key switch between the
/// two.
class PicturePreview : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    /// Shows the picture, or nothing when it is null. The tool tip says how large it is.
    void Show(const QImage& image);
    /// Where the picture is while it does not fill the window.
    void SetBox(const QRect& box);
    bool FillsWindow() const { return fillsWindow_; }

public slots:
    /// What a click does.
    void Click();
    void LeaveFullWindow();
    /// Moves it to the middle of the window.
    void Center();
    void CopyToClipboard();

signals:
    /// The mode has changed.
    void FullWindowChanged(bool fillsWindow);
    void MenuRequested(QPoint globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void FillWindow();

    QRect box_;
    QPoint dragStart_; ///< inside the picture, where a button went down on it
    bool fillsWindow_ = false;
    bool dragged_ = false; ///< the click that ends the drag does not switch the mode
};

} // namespace quillbay
