#pragma once

#include <functional>

class QTimer;
class QWidget;

namespace quillbay {

class EffectHost;

/// The window effects. Each loop lets pending events run after every step; a window may be closed, reopened
/// or destroyed meanwhile, and the loop then ends without touching it. Without layered windows the fades do
/// nothing, with them SmoothClose does nothing.

void FadeIn(QWidget& window, EffectHost& host, int target);
void FadeOut(QWidget& window, EffectHost& host);
void FadeBetween(QWidget& window, int from, int to, int step);
/// FadeBetween for every visible window but this one, until the program closes.
void FadeOthersBetween(const QWidget& window, EffectHost& host, int from, int to, int step);

/// Shows a window modeless: invisible, shown, faded in to the host's FadeIntensity. Ends an effect that still
/// runs on it and gives back what that one took.
void ShowWithFade(QWidget& window, EffectHost& host);

/// Shrinks a window to the platform's minimum by the host's switches while its caption ends in
/// " - Closing"; afterwards caption, size limits and (once hidden) size are what they were. With "Main
/// window only" other windows than the main one do not shrink. A minimised or maximised window does not
/// shrink.
void SmoothClose(QWidget& window, EffectHost& host);

/// The main window's close protocol: stops the refresh timer, closes the main window smoothly, fades out
/// every other visible window and then the main one, sets the phase to Ended and calls `endProgram`. Called
/// again meanwhile it does nothing.
void CloseProgramWithEffects(EffectHost& host, QTimer& refreshTimer, const std::function<void()>& endProgram);

} // namespace quillbay
