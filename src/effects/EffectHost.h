#pragma once

#include "effects/FadeSteps.h"

#include <cstdint>

class QWidget;

namespace quillbay {

/// What the window effects need of the main window, which implements this.
class EffectHost {
public:
    virtual ~EffectHost() = default;

    std::uint8_t FadeIntensity = 237; ///< opacity that windows fade in to and out from; 0 fades in to 255
    std::uint8_t FadeSpeed = 1;       ///< opacity step of a window as large as the main window

    /// The check marks of the Smooth closing submenu.
    virtual ClosingSwitches SmoothClosing() const = 0;
    virtual bool SmoothCloseMainWindowOnly() const = 0;
    virtual QWidget& MainWindow() = 0;
};

} // namespace quillbay
