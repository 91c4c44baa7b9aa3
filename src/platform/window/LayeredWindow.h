#pragma once

class QWidget;

namespace quillbay {

/// True when windows can be given an opacity at this moment: on Windows when user32 has
/// "SetLayeredWindowAttributes", on X11 while a compositing manager runs, nowhere else. Asked anew each time.
bool LayeredWindowsAvailable();

/// Sets or clears the layered style of a native window, keeping its other styles; nothing on X11.
void SetLayeredStyle(QWidget& window, bool on);

/// 0 (invisible) to 255 (opaque) for the whole window. False, and nothing done, without layered windows.
bool SetWindowAlpha(QWidget& window, int opacity);

} // namespace quillbay
