#include "catalogue/FolderOrFileDialog.h"

#include <QDir>
#include <QFileInfo>

namespace quillbay {

FolderOrFileDialog::FolderOrFileDialog(QWidget* parent, const QString& title, const QString& startFolder,
                                       const QString& filterName)
    : QFileDialog(parent, title, startFolder) {
    setOption(DontUseNativeDialog);
    setOption(HideNameFilterDetails);
    setFileMode(Directory);
    setOption(ShowDirsOnly, false);
    setNameFilter(filterName + QStringLiteral(" ()"));
}

QString FolderOrFileDialog::ChosenPath() const { return QDir::toNativeSeparators(selectedFiles().value(0)); }

void FolderOrFileDialog::accept() {
    // The base class does not close on a file in this mode.
    if (QFileInfo(ChosenPath()).isFile())
        done(Accepted);
    else
        QFileDialog::accept();
}

} // namespace quillbay
