#include "common/window/BusyGuard.h"

#include <QPushButton>

namespace quillbay {

BusyGuard::BusyGuard(std::initializer_list<QObject*> taken) : taken_(taken.begin(), taken.end()) {
    SetEnabled(false);
}

BusyGuard::BusyGuard(QPushButton& button, std::initializer_list<QObject*> others)
    : taken_(others.begin(), others.end()), button_(&button), idleCaption_(button.text()),
      focus_(button.window()->focusWidget()) {
    taken_.insert(taken_.begin(), &button);
    SetEnabled(false);
    focusMeanwhile_ = button.window()->focusWidget();
}

BusyGuard::~BusyGuard() {
    if (button_) SetCaption(idleCaption_);
    SetEnabled(true);
    if (button_ && focus_ && button_->window()->focusWidget() == focusMeanwhile_) focus_->setFocus();
}

void BusyGuard::SetCaption(const QString& text) {
    if (button_->text() == text) return;
    button_->setText(text);
    button_->repaint();
}

void BusyGuard::SetEnabled(bool enabled) {
    // Widgets and menu items have no other common base.
    for (const auto& control : taken_)
        if (control) control->setProperty("enabled", enabled);
}

} // namespace quillbay
