#include "common/window/RowClicks.h"

#include <QAbstractItemView>
#include <QMouseEvent>

#include <utility>

namespace quillbay {

namespace {

/// Looks at a press before the view does: afterwards the row is selected in either case.
class RowClicks : public QObject {
public:
    RowClicks(QAbstractItemView& view, std::function<void()> clicked)
        : QObject(&view), view_(view), clicked_(std::move(clicked)) {
        view.viewport()->installEventFilter(this);
        connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
            if (!view_.signalsBlocked()) clicked_();
        });
        connect(&view, &QAbstractItemView::pressed, this, [this](const QModelIndex& index) {
            if (wasSelected_ && view_.selectionModel()->isSelected(index)) clicked_();
        });
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto& mouse = static_cast<const QMouseEvent&>(*event);
            wasSelected_ = view_.selectionModel()->isSelected(view_.indexAt(mouse.position().toPoint()));
        }
        return false;
    }

private:
    QAbstractItemView& view_;
    const std::function<void()> clicked_;
    bool wasSelected_ = false;
};

} // namespace

void ConnectRowClicks(QAbstractItemView& view, std::function<void()> clicked) {
    new RowClicks(view, std::move(clicked));
}

} // namespace quillbay
