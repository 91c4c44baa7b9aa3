#include "effects/window/EffectState.h"

#include <QEvent>
#include <QLayout>
#include <QWidget>

namespace quillbay {

namespace {

QString ClosingCaption(const QString& caption) { return caption + QStringLiteral(" - Closing"); }

} // namespace

EffectState::EffectState(QWidget& window) : QObject(&window), window_(window) {
    window.installEventFilter(this);
}

EffectState& EffectState::Of(QWidget& window) {
    if (auto* state = window.findChild<EffectState*>(QString(), Qt::FindDirectChildrenOnly)) return *state;
    return *new EffectState(window);
}

void EffectState::MarkCaption() {
    if (caption_) return;
    caption_ = window_.windowTitle();
    window_.setWindowTitle(ClosingCaption(*caption_));
}

void EffectState::RestoreCaption() {
    if (!caption_) return;
    if (window_.windowTitle() == ClosingCaption(*caption_)) window_.setWindowTitle(*caption_);
    caption_.reset();
}

void EffectState::RelaxSize() {
    if (sizes_) return;
    QLayout* layout = window_.layout();
    sizes_ = Sizes{window_.size(), window_.minimumSize(), window_.maximumSize(),
                   layout && window_.minimumSize() == layout->totalMinimumSize()};
    if (layout) layout->setEnabled(false);
    window_.setMinimumSize(0, 0);
    window_.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void EffectState::RestoreSize() {
    GiveSizeBack();
    sizes_.reset();
}

void EffectState::GiveSizeBack() {
    if (!sizes_) return;
    const Sizes sizes = *sizes_;
    window_.setMaximumSize(sizes.maximum);
    if (!sizes.minimumIsOfLayout) window_.setMinimumSize(sizes.minimum);
    if (QLayout* layout = window_.layout()) {
        layout->setEnabled(true);
        layout->invalidate();
        layout->activate();
    }
    window_.resize(sizes.current);
}

bool EffectState::eventFilter(QObject* watched, QEvent* event) {
    // The system hides a window by itself when it is minimised; that is no closing.
    if (watched == &window_ && event->type() == QEvent::Hide && !event->spontaneous()) {
        RestoreCaption();
        // The size is kept: a late event of the closed native window may bring its last size again.
        GiveSizeBack();
    }
    return false;
}

} // namespace quillbay
