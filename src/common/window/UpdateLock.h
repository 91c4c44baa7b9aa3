#pragma once

#include <QWidget>

namespace quillbay {

/// While it lives the window is not repainted, so that the user sees the finished state at once.
class UpdateLock {
public:
    explicit UpdateLock(QWidget& window) : window_(window), wasEnabled_(window.updatesEnabled()) {
        window_.setUpdatesEnabled(false);
    }
    ~UpdateLock() { window_.setUpdatesEnabled(wasEnabled_); }
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;

private:
    QWidget& window_;
    bool wasEnabled_;
};

} // namespace quillbay
