#pragma once

#include "common/window/OnlyEscape.h"
#include "common/window/PaintClock.h"
#include "platform/window/TaskbarProgress.h"

#include <QElapsedTimer>

#include <cstddef>
#include <optional>

class QProgressBar;

namespace quillbay {

/// Shows a progress bar for as long as it lives, and in the taskbar when the job takes its time. The windows
/// of a long job stay painted and can be moved, but nothing that the user does reaches them and no timer
/// fires: the job is alone. Events run at most about sixty times a second.
class ShownProgress {
public:
    /// Shows the bar at 0 and repaints the window in its new layout.
    explicit ShownProgress(QProgressBar& bar);
    /// Hides the bar; the window has its old layout at once.
    ~ShownProgress();
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;

    /// `done` of `total` as a part of the range `from` to `to` (per cent). The end of a range always shows;
    /// a total of 0 shows nothing.
    void Set(std::size_t done, std::size_t total, int from = 0, int to = 100);
    /// Lets the windows live where there is no number to show.
    void Breathe();
    /// Whether the user has pressed Escape, or closed a window, meanwhile.
    bool IsStopAsked() const { return gate_.IsStopped(); }

private:
    void LayOut();
    void LetEventsRun();

    QProgressBar& bar_;
    const OnlyEscape gate_;
    PaintClock clock_;
    QElapsedTimer sinceStart_;
    std::optional<TaskbarProgress> taskbar_;
};

} // namespace quillbay
