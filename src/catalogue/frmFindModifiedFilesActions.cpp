#include "catalogue/frmFindModifiedFiles.h"
#include "ui_frmFindModifiedFiles.h"

namespace quillbay {

void frmFindModifiedFiles::ConnectActions() {
    connect(ui_->lstList, &QListWidget::itemChanged, this, &frmFindModifiedFiles::lstList_ItemCheck);
}

void frmFindModifiedFiles::lstList_ItemCheck() {
    itemChecked_ = false;
    for (int row = 0; row < ui_->lstList->count() && !itemChecked_; ++row)
        itemChecked_ = ui_->lstList->item(row)->checkState() == Qt::Checked;
    ApplyButtonRule();
}

void frmFindModifiedFiles::ApplyButtonRule() {
    const bool enabled = !busy_ && !filesMovedOrDeleted_ && pathIsFolder_ && itemChecked_;
    for (QPushButton* button : {ui_->cmdCopy, ui_->cmdMove, ui_->cmdDelete})
        button->setEnabled(enabled);
}

} // namespace quillbay
