#include "support/FakeLayeredWindow.h"

#include "platform/window/LayeredWindow.h"

namespace quillbay {

namespace {

test::LayeredWindows* current = nullptr;

} // namespace

namespace test {

LayeredWindows::LayeredWindows() { current = this; }

LayeredWindows::~LayeredWindows() { current = nullptr; }

void LayeredWindows::Set(const QWidget& window, int opacity) {
    steps_.push_back({&window, opacity});
    if (OnOpacity) OnOpacity(opacity);
}

std::vector<int> LayeredWindows::Take(const QWidget& window) {
    std::vector<int> opacities;
    for (; taken_ < steps_.size(); ++taken_)
        if (steps_[taken_].window == &window) opacities.push_back(steps_[taken_].opacity);
    return opacities;
}

int LayeredWindows::Last(const QWidget& window) const {
    int last = -1;
    for (const Step& step : steps_)
        if (step.window == &window) last = step.opacity;
    return last;
}

} // namespace test

// These take the place of the platform's own in the test program.

bool LayeredWindowsAvailable() { return current != nullptr; }

void SetLayeredStyle(QWidget&, bool) {}

bool SetWindowAlpha(QWidget& window, int opacity) {
    if (!current) return false;
    current->Set(window, opacity);
    return true;
}

} // namespace quillbay
