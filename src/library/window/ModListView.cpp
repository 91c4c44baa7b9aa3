#include "library/window/ModListView.h"

#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr QLatin1String kInstalled("Installed");

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
    if (count() == 0 || !std::ranges::equal(rows, rows_, &ModRow::IsRowOf)) {
        rows_ = rows;
        Fill();
    } else {
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (std::exchange(rows_[row].isInstalled, rows[row].isInstalled) != rows[row].isInstalled)
                MarkRow(static_cast<int>(row));
        }
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
        if (row.isInstalled) MarkRow(count() - 1);
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

void ModListView::MarkRow(int row) {
    const bool isInstalled = rows_[static_cast<std::size_t>(row)].isInstalled;
    QFont font; // of which only the weight counts: the rest is the list's
    if (isInstalled) font.setBold(true);
    item(row)->setFont(font);
    item(row)->setData(Qt::AccessibleDescriptionRole, isInstalled ? QVariant(kInstalled) : QVariant());
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
    const auto at = static_cast<std::size_t>(row(&item));
    return ModRow{FromQString(item.text()), ModPath{FromQString(item.data(Qt::UserRole).toString())},
                  at < rows_.size() && rows_[at].isInstalled};
}

void ModListView::keyboardSearch(const QString& search) {
    const bool goesOn = typing_.isValid() && typing_.elapsed() < QApplication::keyboardInputInterval();
    typed_ = (goesOn ? typed_ : QString()) + search;
    typing_.start();
    if (search.isEmpty() || typed_.trimmed().isEmpty()) return typed_.clear();
    // One letter again and again goes from one mod to the next; a longer text may be that of the same mod.
    const bool isOneLetter = typed_.count(typed_.front(), Qt::CaseInsensitive) == typed_.size();
    const QString wanted = isOneLetter ? typed_.left(1) : typed_;
    const auto selected = selectedItems();
    const int from = selected.isEmpty() ? 0 : row(selected.front()) + (isOneLetter ? 1 : 0);
    int found = FindTyped(wanted, from, false);
    if (found < 0) found = FindTyped(wanted, from, true);
    if (found >= 0) setCurrentRow(found, QItemSelectionModel::ClearAndSelect);
}

int ModListView::FindTyped(const QString& typed, int from, bool inWords) const {
    const auto fits = [&](const QString& name) {
        for (auto at = name.indexOf(typed, 0, Qt::CaseInsensitive); at >= 0;
             at = inWords ? name.indexOf(typed, at + 1, Qt::CaseInsensitive) : -1) {
            if (at == 0 || (inWords && !name[at - 1].isLetterOrNumber())) return true;
        }
        return false;
    };
    const int rows = static_cast<int>(rows_.size());
    for (int step = 0; step < rows; ++step) {
        const int row = (from + step) % rows;
        if (fits(ToQString(DisplayName(rows_[static_cast<std::size_t>(row)].text)))) return row;
    }
    return -1;
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
        QToolTip::showText(help->globalPos(), item ? PlainToolTip(ToolTipOf(*item)) : QString(), viewport());
        return true;
    }
    return QListWidget::viewportEvent(event);
}

QString ModListView::ToolTipOf(const QListWidgetItem& item) const {
    const QFontMetrics metrics(item.font().resolve(font()));
    QStringList lines;
    if (metrics.horizontalAdvance(item.text()) + 8 > viewport()->width()) lines << item.text();
    if (item.data(Qt::AccessibleDescriptionRole).isValid()) lines << kInstalled;
    return lines.join(u'\n');
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
