#include "support/FakeLayeredWindow.h"

#include "platform/window/LayeredWindow.h"

// These take the place of the platform's own in the test program.
namespace quillbay {

bool LayeredWindowsAvailable() { return test::LayeredWindows::Current != nullptr; }

void SetLayeredStyle(QWidget&, bool) {}

bool SetWindowAlpha(QWidget& window, int opacity) {
    if (!LayeredWindowsAvailable()) return false;
    test::LayeredWindows::Current->Set(window, opacity);
    return true;
}

} // namespace quillbay
