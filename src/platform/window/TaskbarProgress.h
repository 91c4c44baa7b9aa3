#pragma once

#include <memory>

class QWidget;

namespace quillbay {

/// Shows on a window's button in the taskbar how far a job is, for as long as this object lives. Where the
/// desktop has no such thing (POSIX) it does nothing.
class TaskbarProgress {
public:
    explicit TaskbarProgress(const QWidget& window);
    ~TaskbarProgress();
    TaskbarProgress(const TaskbarProgress&) = delete;
    TaskbarProgress& operator=(const TaskbarProgress&) = delete;

    /// 0 to 100.
    void Set(int percent);

private:
    struct Button;
    std::unique_ptr<Button> button_;
};

} // namespace quillbay
