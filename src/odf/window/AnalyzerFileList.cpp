#include "odf/window/AnalyzerFileList.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

struct Command {
    int key;
    Qt::KeyboardModifier modifier;
    void (AnalyzerFileList::*signal)();
};

constexpr std::array kCommands{
    Command{Qt::Key_C, Qt::ControlModifier, &AnalyzerFileList::CopyRequested},
    Command{Qt::Key_V, Qt::ControlModifier, &AnalyzerFileList::PasteRequested},
    Command{Qt::Key_D, Qt::ControlModifier, &AnalyzerFileList::RemoveRequested},
    Command{Qt::Key_Return, Qt::NoModifier, &AnalyzerFileList::OpenRequested},
    Command{Qt::Key_Enter, Qt::NoModifier, &AnalyzerFileList::OpenRequested},
};

} // namespace

AnalyzerFileList::AnalyzerFileList(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    connect(this, &QListWidget::itemSelectionChanged, this, &AnalyzerFileList::RowClicked);
}

QListWidgetItem* AnalyzerFileList::SelectedItem() const {
    const auto items = selectedItems();
    return items.isEmpty() ? nullptr : items.front();
}

void AnalyzerFileList::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const auto command = std::ranges::find_if(kCommands, [&](const Command& candidate) {
        return candidate.key == event->key() && Qt::KeyboardModifiers(candidate.modifier) == modifiers;
    });
    if (command == kCommands.end()) {
        QListWidget::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        emit(this->*command->signal)();
    }
}

void AnalyzerFileList::mousePressEvent(QMouseEvent* event) {
    QListWidgetItem* item = itemAt(event->position().toPoint());
    const bool again = item && item->isSelected();
    // With a modifier the list would take the selection away again.
    if (item && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier)
        QListWidget::mousePressEvent(event);
    if (item)
        setCurrentItem(item, QItemSelectionModel::ClearAndSelect);
    else
        setCurrentRow(-1);
    if (again) emit RowClicked();
    emit MouseDown(event->button(), event->globalPosition().toPoint());
}

void AnalyzerFileList::mouseDoubleClickEvent(QMouseEvent* event) {
    const QListWidgetItem* item = itemAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && item && item->isSelected())
        emit OpenRequested();
    else
        mousePressEvent(event);
}

void AnalyzerFileList::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has its menu already when the button goes down.
    if (event->reason() == QContextMenuEvent::Mouse) return;
    const QListWidgetItem* item = SelectedItem();
    const QPoint place = item ? visualItemRect(item).center() : QPoint();
    emit MouseDown(Qt::RightButton, viewport()->mapToGlobal(place));
}

} // namespace quillbay
