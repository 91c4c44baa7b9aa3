#pragma once

#include "effects/window/EffectWindow.h"

class QLabel;
class QPushButton;

namespace quillbay {

/// A window to read that says the program's version: its one button, Enter and Esc close it.
class OkWindow : public EffectWindow {
    Q_OBJECT

protected:
    using EffectWindow::EffectWindow;

    /// To be called once, when the controls exist.
    void SetUp(QPushButton& ok, QLabel& version);
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* ok_ = nullptr;
};

} // namespace quillbay
