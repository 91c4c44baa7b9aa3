#pragma once

#include <QElapsedTimer>

namespace quillbay {

/// Keeps a long job from painting more often than the eye can see.
class PaintClock {
public:
    PaintClock() { sinceDue_.start(); }
    /// True when a screen would show something new; the next time counts from here.
    bool Due() {
        if (sinceDue_.elapsed() < kEveryMs) return false;
        sinceDue_.restart();
        return true;
    }

private:
    static constexpr qint64 kEveryMs = 16;
    QElapsedTimer sinceDue_;
};

} // namespace quillbay
