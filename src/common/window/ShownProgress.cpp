#include "common/window/ShownProgress.h"

#include <QLayout>
#include <QProgressBar>

#include <algorithm>

namespace quillbay {

ShownProgress::ShownProgress(QProgressBar& bar) : bar_(bar) {
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
    if (value == bar_.value() || (!atEnd && !clock_.Due())) {
        return;
    }
    // Setting the value repaints the bar at once.
    bar_.setValue(value);
}

void ShownProgress::LayOut() {
    // No events run during file work, so the posted layout request would come too late.
    if (QLayout* layout = bar_.parentWidget()->layout()) {
        layout->activate();
    }
}

} // namespace quillbay
