#pragma once

#include "effects/EffectWindow.h"

class QPushButton;

namespace quillbay {

/// A window to read: its one button, Enter and Esc close it.
class OkWindow : public EffectWindow {
    Q_OBJECT

protected:
    using EffectWindow::EffectWindow;

    /// To be called once, when the button exists.
    void SetOkButton(QPushButton& button);
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* ok_ = nullptr;
};

} // namespace quillbay
