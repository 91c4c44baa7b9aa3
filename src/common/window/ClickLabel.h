#pragma once

#include <QLabel>

namespace quillbay {

/// A label that can be pressed with the left button, Enter or the blank key. It is underlined while it has
/// the focus.
class ClickLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

signals:
    /// Not at the end of selecting text with the mouse, and once each time a key goes down.
    void Clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Underline(bool on);
};

} // namespace quillbay
