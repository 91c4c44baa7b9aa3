#pragma once

class QWidget;

namespace quillbay {

class EffectHost;

/// The window effects. Each loop lets pending events run after every step; a window may be closed, reopened
/// or destroyed meanwhile, and the loop then ends without touching it. Without layered windows the fades do
/// nothing, with them SmoothClose does nothing.

void FadeIn(QWidget& window, EffectHost& host, int target);
void FadeOut(QWidget& window, EffectHost& host);
void FadeBetween(QWidget& window, int from, int to, int step);

/// Shows a window modeless: invisible, shown, faded in to the host's FadeIntensity.
void ShowWithFade(QWidget& window, EffectHost& host);

/// Shrinks a window to the platform's minimum by the host's switches while its caption ends in
/// " - Closing"; afterwards caption, size limits and (once hidden) size are what they were. With "Main
/// window only" other windows than the main one do not shrink. A minimised or maximised window does not
/// shrink.
void SmoothClose(QWidget& window, EffectHost& host);

} // namespace quillbay
