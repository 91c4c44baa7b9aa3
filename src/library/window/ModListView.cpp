#include "library/window/ModListView.h"

#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace quillbay {

namespace {

/// Gives every row the height that the list says.
class RowDelegate : public QStyledItemDelegate {
public:
    explicit RowDelegate(const ModListView& list, QObject* parent)
        : QStyledItemDelegate(parent), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), list_.RowHeight()};
    }

private:
    const ModListView& list_;
};

} // namespace

ModListView::ModListView(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(SingleSelection);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new RowDelegate(*this, this));
    FitRowsToFont();
    connect(this, &QListWidget::itemDoubleClicked, this, &ModListView::InstallRequested);
}

void ModListView::SetRows(const std::vector<ModRow>& rows) {
    const QSignalBlocker quiet(this);
    if (rows != rows_ || count() == 0) {
        rows_ = rows;
        Fill();
    }
    if (!rows_.empty() && selectedItems().isEmpty()) {
        setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    }
}

void ModListView::Fill() {
    const auto selected = SelectedRow();
    const int scrolled = verticalScrollBar()->value();
    setUpdatesEnabled(false);
    clear();
    for (const ModRow& row : rows_) {
        auto* item = new QListWidgetItem(ToQString(row.text), this);
        item->setData(Qt::UserRole, ToQString(row.path.text));
    }
    if (rows_.empty()) {
        new QListWidgetItem(ToQString(kNoModsRow), this);
    }
    if (selected) {
        SelectPath(selected->path);
    }
    doItemsLayout();
    verticalScrollBar()->setValue(scrolled);
    setUpdatesEnabled(true);
}

bool ModListView::SelectPath(const ModPath& path) {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const ModRow& row) { return row.path == path; });
    if (found == rows_.end() || path.Empty()) {
        return false;
    }
    setCurrentRow(static_cast<int>(found - rows_.begin()), QItemSelectionModel::ClearAndSelect);
    return true;
}

std::optional<ModRow> ModListView::SelectedRow() const {
    const auto items = selectedItems();
    if (items.isEmpty()) {
        return std::nullopt;
    }
    const QListWidgetItem& item = *items.front();
    return ModRow{FromQString(item.text()), ModPath{FromQString(item.data(Qt::UserRole).toString())}};
}

void ModListView::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        QListWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A key that is held down must not answer the question it has just raised.
        if (!event->isAutoRepeat()) {
            emit InstallRequested();
        }
        return;
    case Qt::Key_Backspace:
        if (!event->isAutoRepeat()) {
            emit UninstallRequested();
        }
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void ModListView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QListWidget::mousePressEvent(event);
        return;
    }
    if (QListWidgetItem* item = itemAt(event->position().toPoint())) {
        setCurrentItem(item, QItemSelectionModel::ClearAndSelect);
    }
    emit MenuRequested(event->globalPosition().toPoint());
}

void ModListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    QListWidget::mouseDoubleClickEvent(event);
}

void ModListView::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its menu already when the button goes down.
    if (event->reason() != QContextMenuEvent::Mouse) {
        emit MenuRequested(event->globalPos());
    }
}

bool ModListView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QListWidgetItem* item = itemAt(help->pos());
        const bool cut = item && fontMetrics().horizontalAdvance(item->text()) + 8 > viewport()->width();
        QToolTip::showText(help->globalPos(), cut ? PlainToolTip(item->text()) : QString(), viewport());
        return true;
    }
    return QListWidget::viewportEvent(event);
}

void ModListView::changeEvent(QEvent* event) {
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        FitRowsToFont();
    }
}

void ModListView::FitRowsToFont() {
    rowHeight_ = std::max(kStandardRowHeight, fontMetrics().height() + 1);
    verticalScrollBar()->setSingleStep(1);
    scheduleDelayedItemsLayout();
}

} // namespace quillbay
