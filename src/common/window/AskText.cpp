#include "common/window/AskText.h"

#include <QInputDialog>
#include <QPointer>

namespace quillbay {

std::optional<QString> AskText(QWidget* parent, const QString& prompt, const QString& title) {
    // On the heap: the parent may be destroyed, and the box with it, while the box is open.
    const QPointer<QInputDialog> box = new QInputDialog(parent);
    box->setWindowTitle(title);
    box->setLabelText(prompt);
    const bool confirmed = box->exec() == QDialog::Accepted;
    std::optional<QString> text;
    if (confirmed && box) text = box->textValue();
    delete box;
    return text;
}

} // namespace quillbay
