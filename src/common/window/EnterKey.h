#pragma once

class QKeyEvent;
class QWidget;

namespace quillbay {

/// Enter presses the push button that has the focus, as Qt has it in dialogs only; a key that is held down
/// presses it once. True when the key is used.
bool PressFocusedButton(const QWidget& window, const QKeyEvent& event);

} // namespace quillbay
