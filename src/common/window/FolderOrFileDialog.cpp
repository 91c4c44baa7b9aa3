#include "common/window/FolderOrFileDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>

namespace quillbay {

FolderOrFileDialog::FolderOrFileDialog(QWidget* parent, const QString& title, const QString& startFolder,
                                       const QString& filterName)
    : QFileDialog(parent, title, startFolder) {
    setOption(DontUseNativeDialog);
    setOption(HideNameFilterDetails);
    setFileMode(Directory);
    setOption(ShowDirsOnly, false);
    setNameFilter(filterName + QStringLiteral(" ()"));
    // In this mode the base class neither enables its button for a file nor closes on one.
    QPushButton* choose = findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    connect(findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), &QLineEdit::textChanged, choose,
            [this, choose] {
                if (ChoseFile()) choose->setEnabled(true);
            });
}

QString FolderOrFileDialog::ChosenPath() const { return QDir::toNativeSeparators(selectedFiles().value(0)); }

bool FolderOrFileDialog::ChoseFile() const { return QFileInfo(ChosenPath()).isFile(); }

void FolderOrFileDialog::accept() {
    if (ChoseFile())
        done(Accepted);
    else
        QFileDialog::accept();
}

} // namespace quillbay
