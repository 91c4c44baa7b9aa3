#include "common/window/ShowMessage.h"

#include "common/window/QtText.h"

#include <QInputDialog>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace quillbay {

QMessageBox::StandardButton ShowMessage(QWidget* parent, const QString& text, const QString& title,
                                        QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
                                        const QString& informative, const QString& details,
                                        QMessageBox::StandardButton byEnter) {
    // On the heap: the parent may be destroyed, and the box with it, while the box is open.
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, QString(), buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    if (!informative.isEmpty()) {
        box->setInformativeText(informative);
        for (QLabel* label : box->findChildren<QLabel*>())
            label->setTextFormat(Qt::PlainText);
    }
    if (!details.isEmpty()) box->setDetailedText(details);
    box->setDefaultButton(byEnter);
    const bool hasNo = buttons.testFlag(QMessageBox::No);
    if (hasNo) box->setEscapeButton(QMessageBox::No);

    const auto answer = static_cast<QMessageBox::StandardButton>(box->exec());
    delete box;
    return answer == QMessageBox::NoButton && hasNo ? QMessageBox::No : answer;
}

bool Confirmed(QWidget* parent, const QString& text, const QString& title, QMessageBox::Icon icon,
               const QString& informative, QMessageBox::StandardButton byEnter) {
    return ShowMessage(parent, text, title, icon, QMessageBox::Yes | QMessageBox::No, informative, {},
                       byEnter) == QMessageBox::Yes;
}

int AskChoice(QWidget* parent, const QString& text, const QStringList& captions) {
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Question, QLatin1String(kProgramTitle),
                                                      QString(), QMessageBox::NoButton, parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    QList<QPushButton*> buttons;
    for (const QString& caption : captions)
        buttons << box->addButton(caption, QMessageBox::ActionRole);
    box->setEscapeButton(buttons.last());
    box->setDefaultButton(buttons.last());
    box->exec();
    const auto pressed = box ? buttons.indexOf(qobject_cast<QPushButton*>(box->clickedButton())) : -1;
    delete box;
    return static_cast<int>(pressed < 0 ? captions.size() - 1 : pressed);
}

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

void ShowError(QWidget* parent, const QString& text) {
    ShowMessage(parent, text, QStringLiteral("Error!"), QMessageBox::Critical);
}

bool ShowErrorWithWayOut(QWidget* parent, const QString& text, const QString& wayOut, const QIcon& icon) {
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Critical, QStringLiteral("Error!"), QString(), QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    QPushButton* leads = box->addButton(wayOut, QMessageBox::ActionRole);
    leads->setIcon(icon);
    box->setEscapeButton(QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::Ok);
    box->exec();
    const bool isTaken = box && box->clickedButton() == leads;
    delete box;
    return isTaken;
}

QString WithPath(const QString& sentence, std::string_view path, const std::error_code& error) {
    const QString text = sentence + QStringLiteral("\n\n") + ShownPath(path);
    return error ? text + u'\n' + Reason(error) : text;
}

QString Reason(const std::error_code& error) { return QString::fromStdString(error.message()); }

} // namespace quillbay
