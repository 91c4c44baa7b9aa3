#pragma once

#include "common/window/PaintClock.h"

#include <cstddef>

class QProgressBar;

namespace quillbay {

/// Shows a progress bar for as long as it lives. It paints without letting other events run, at most about
/// sixty times a second and only when the shown number changes.
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

private:
    void LayOut();

    QProgressBar& bar_;
    PaintClock clock_;
};

} // namespace quillbay
