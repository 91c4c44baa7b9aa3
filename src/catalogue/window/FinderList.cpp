#include "catalogue/window/FinderList.h"

#include "common/window/QtText.h"
#include "common/window/UpdateLock.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <memory>

namespace quillbay {

namespace {

bool IsChecked(const QListWidgetItem& row) { return row.checkState() == Qt::Checked; }

} // namespace

FinderList::FinderList(QWidget* parent) : QListWidget(parent) { setSelectionMode(ExtendedSelection); }

void FinderList::AddRows(const std::vector<std::string>& paths, std::size_t from, Qt::CheckState state) {
    const QSignalBlocker quiet(this);
    for (std::size_t at = from; at < paths.size(); ++at) {
        auto row = std::make_unique<QListWidgetItem>(ToQString(paths[at]));
        row->setCheckState(state);
        addItem(row.release());
    }
}

void FinderList::ChangeRows(const std::function<void()>& change) {
    const UpdateLock lock(*this);
    const QSignalBlocker quiet(this);
    const int top = indexAt({1, 1}).row();
    change();
    const int last = count() - 1;
    if (top >= 0 && last >= 0) scrollToItem(item(std::min(top, last)), QAbstractItemView::PositionAtTop);
}

void FinderList::Invert() {
    ChangeRows([this] {
        for (int row = 0; row < count(); ++row)
            item(row)->setCheckState(IsChecked(*item(row)) ? Qt::Unchecked : Qt::Checked);
    });
}

void FinderList::keyPressEvent(QKeyEvent* event) {
    QListWidgetItem* current = currentItem();
    const bool isSpace = event->key() == Qt::Key_Space && !(event->modifiers() & ~Qt::ShiftModifier);
    if (!isSpace || !current) return QListWidget::keyPressEvent(event);
    const auto state = IsChecked(*current) ? Qt::Unchecked : Qt::Checked;
    {
        const UpdateLock lock(*this);
        const QSignalBlocker quiet(this);
        for (QListWidgetItem* row : selectedItems())
            row->setCheckState(state);
        current->setCheckState(state); // which Ctrl may have taken out of the selection
    }
    emit itemChanged(current);
}

bool FinderList::HasCheckedRow() const {
    for (int row = 0; row < count(); ++row)
        if (IsChecked(*item(row))) return true;
    return false;
}

std::vector<std::string> FinderList::Paths(bool onlyChecked) const {
    std::vector<std::string> paths;
    for (int row = 0; row < count(); ++row)
        if (!onlyChecked || IsChecked(*item(row))) paths.push_back(FromQString(item(row)->text()));
    return paths;
}

} // namespace quillbay
