#include "common/window/ShownProgress.h"

#include <QCoreApplication>
#include <QLayout>
#include <QProgressBar>

#include <algorithm>

namespace quillbay {

namespace {

/// A job that is over by then needs no events and no taskbar.
constexpr qint64 kNoticedAfterMs = 200;

} // namespace

ShownProgress::ShownProgress(QProgressBar& bar) : bar_(bar) {
    sinceStart_.start();
    bar_.setValue(0);
    bar_.show();
    LayOut();
    bar_.window()->repaint();
}

ShownProgress::~ShownProgress() {
    bar_.hide();
    LayOut();
}

void ShownProgress::Set(std::size_t done, std::size_t total, int from, int to) {
    if (total == 0) {
        return;
    }
    const std::size_t share = std::min(done, total) * static_cast<std::size_t>(to - from) / total;
    const int value = from + static_cast<int>(share);
    const bool atEnd = done >= total;
    if (!atEnd && !clock_.Due()) return;
    // A new value repaints the bar at once.
    bar_.setValue(value);
    LetEventsRun();
}

void ShownProgress::Breathe() {
    if (clock_.Due()) LetEventsRun();
}

void ShownProgress::LetEventsRun() {
    if (sinceStart_.elapsed() < kNoticedAfterMs) return;
    if (!taskbar_) taskbar_.emplace(*bar_.window());
    taskbar_->Set(bar_.value());
    QCoreApplication::processEvents();
}

void ShownProgress::LayOut() {
    // The posted layout request would come too late: at first no events run.
    if (QLayout* layout = bar_.parentWidget()->layout()) {
        layout->activate();
    }
}

} // namespace quillbay
