#pragma once

#include "effects/FadeSteps.h"

#include <cstdint>

class QWidget;

namespace quillbay {

enum class ProgramPhase {
    Running,
    Closing, ///< the main window's closing effects run
    Ended,   ///< the event loop is being left: no effect goes on and no window opens
};

/// What the window effects and their options need of the main window, which implements this.
class EffectHost {
public:
    virtual ~EffectHost() = default;

    std::uint8_t FadeIntensity = 237; ///< opacity that windows fade in to and out from; 0 fades in to 255
    std::uint8_t FadeSpeed = 1;       ///< opacity step of a window as large as the main window

    /// Code that lets events run must read this afterwards, and go on only while it is Running: an event may
    /// have closed the program. CloseProgramWithEffects sets Ended, as does every other end of the program.
    ProgramPhase Phase = ProgramPhase::Running;

    /// The check marks of the Smooth closing submenu.
    virtual ClosingSwitches SmoothClosing() const = 0;
    virtual bool SmoothCloseMainWindowOnly() const = 0;
    /// The look for changes in the mods folder once a second; on at start-up.
    virtual bool AutoRefresh() const = 0;
    virtual void SetAutoRefresh(bool on) = 0;
    virtual QWidget& MainWindow() = 0;
};

} // namespace quillbay
