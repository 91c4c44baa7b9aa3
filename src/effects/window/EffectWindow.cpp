#include "effects/window/EffectWindow.h"

#include "common/window/EnterKey.h"
#include "effects/window/EffectHost.h"
#include "effects/window/EffectState.h"
#include "effects/window/WindowEffects.h"
#include "effects/window/WindowPlace.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>

#include <algorithm>

namespace quillbay {

namespace {

constexpr int kUsualFontHeight = 16; // pixels, of the 9-point fonts that desktops use at 96 dots per inch

} // namespace

EffectWindow::EffectWindow(EffectHost& host, QAction* menuItem) : host_(host), menuItem_(menuItem) {}

void EffectWindow::Open() {
    if (host_.Phase != ProgramPhase::Running) return;
    MarkMenuItem(true);
    if (isVisible() && !closing_) {
        BringToFront();
        Form_OpenedAgain();
        return;
    }
    closing_ = false;
    if (opening_ == 0) GrowWithFont();
    const unsigned opening = ++opening_;
    const QPointer<EffectWindow> self = this;
    setWindowIcon(host_.MainWindow().windowIcon());
    EffectState::Of(*this).RestoreSize(); // a closing may have taken it and still run
    Form_Load();
    if (place_) move(PlaceOnScreens({*place_, frameGeometry().size()}, AvailableScreens()));
    ShowWithFade(*this, host_);
    if (self && opening == opening_ && isVisible() && !closing_) Form_Shown();
}

void EffectWindow::MarkMenuItem(bool marked) {
    if (!menuItem_) return;
    // Beside an item that could be checked some styles draw an empty square.
    if (marked) menuItem_->setCheckable(true);
    menuItem_->setChecked(marked);
    menuItem_->setCheckable(marked);
}

void EffectWindow::BringToFront() {
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
}

int EffectWindow::AtFont(int pixels) const {
    return pixels * std::max(fontMetrics().height(), kUsualFontHeight) / kUsualFontHeight;
}

void EffectWindow::GrowWithFont() { resize(AtFont(width()), AtFont(height())); }

void EffectWindow::closeEvent(QCloseEvent* event) {
    if (effectsDone_ || !isVisible()) return;
    event->ignore();
    if (closing_) return;
    const QPointer<EffectWindow> self = this;
    if (!Form_QueryUnload() || !self) return;
    closing_ = true;
    if (!isMinimized() && !isMaximized()) place_ = pos();
    QMetaObject::invokeMethod(
        this, [this, opening = opening_] { CloseWithEffects(opening); }, Qt::QueuedConnection);
}

void EffectWindow::CloseWithEffects(unsigned opening) {
    const QPointer<EffectWindow> self = this;
    const auto overtaken = [&] { return !self || opening != opening_; };
    if (overtaken()) return;
    RunClosingEffects();
    if (overtaken()) return;

    effectsDone_ = true;
    close();
    effectsDone_ = false;
    closing_ = false;
    MarkMenuItem(false);
    emit Closed();
}

void EffectWindow::RunClosingEffects() {
    const QPointer<EffectWindow> self = this;
    const unsigned opening = opening_;
    SmoothClose(*this, host_);
    if (self && opening == opening_) FadeOut(*this, host_);
}

void EffectWindow::keyPressEvent(QKeyEvent* event) {
    // A key that is held down on a message must not close the window behind it, too.
    if (event->key() == Qt::Key_Escape && !event->isAutoRepeat())
        close();
    else if (!PressFocusedButton(*this, *event))
        QWidget::keyPressEvent(event);
}

void EffectWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) Form_Activate();
}

} // namespace quillbay
