#pragma once

#include "common/window/Hourglass.h"

#include <QPointer>
#include <QString>

#include <initializer_list>
#include <optional>
#include <vector>

class QPushButton;
class QWidget;

namespace quillbay {

/// Takes controls and menu items away from the user while a command works, and gives them back on every way
/// out.
class BusyGuard {
public:
    explicit BusyGuard(std::initializer_list<QObject*> taken);
    /// `button`, one more of them, says how far the command is, and gets its caption and the focus back.
    BusyGuard(QPushButton& button, std::initializer_list<QObject*> others);
    ~BusyGuard();
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

    /// The button shows it at once.
    void SetCaption(const QString& text);
    void ShowHourglass() { hourglass_.emplace(); }
    void ShowArrow() { hourglass_.reset(); }

private:
    void SetEnabled(bool enabled);

    std::vector<QPointer<QObject>> taken_;
    QPointer<QPushButton> button_;
    QString idleCaption_;
    QPointer<QWidget> focus_;
    QPointer<QWidget> focusMeanwhile_; ///< where the toolkit moved it when its control was disabled
    std::optional<Hourglass> hourglass_;
};

} // namespace quillbay
