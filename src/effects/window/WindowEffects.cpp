#include "effects/window/WindowEffects.h"

#include "effects/FadeSteps.h"
#include "effects/window/EffectHost.h"
#include "effects/window/EffectState.h"
#include "platform/window/LayeredWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <cstddef>

namespace quillbay {

namespace {

constexpr std::size_t kMaxResizes = 300;

/// One running effect: says after each yield whether it may go on.
class EffectRun {
public:
    EffectRun(QWidget& window, const EffectHost* host)
        : window_(&window), host_(host), number_(EffectState::Of(window).Begin()),
          wasVisible_(window.isVisible()) {}

    /// Lets pending events run. False when the window was destroyed or hidden meanwhile, a newer effect
    /// began on it, or the program ended: the effect then touches nothing any more.
    bool Yield() {
        QCoreApplication::processEvents();
        return MayGoOn();
    }

private:
    bool MayGoOn() const {
        return window_ && EffectState::Of(*window_).IsNewest(number_) &&
               (!wasVisible_ || window_->isVisible()) && !(host_ && host_->Phase == ProgramPhase::Ended);
    }

    QPointer<QWidget> window_;
    const EffectHost* host_; ///< looked at only while the window lives
    unsigned number_;
    bool wasVisible_;
};

PixelSize SizeOf(const QWidget& window) { return {window.width(), window.height()}; }

void RunFade(QWidget& window, const EffectHost* host, const std::vector<int>& opacities) {
    if (!LayeredWindowsAvailable()) return;
    EffectRun run(window, host);
    for (const int opacity : opacities) {
        SetWindowAlpha(window, opacity);
        if (!run.Yield()) return;
    }
}

/// Takes every n-th size and the last one, so that a big window closes about as fast as a small one. False
/// when the shrinking was broken off.
bool Shrink(QWidget& window, const EffectHost& host) {
    EffectRun run(window, &host);
    const std::vector<PixelSize> sizes = SmoothCloseSizes(SizeOf(window), host.SmoothClosing());
    if (!sizes.empty()) EffectState::Of(window).RelaxSize();
    const std::size_t stride = sizes.size() / kMaxResizes + 1;
    for (std::size_t at = 0; at < sizes.size(); ++at) {
        if ((at + 1) % stride != 0 && at + 1 != sizes.size()) continue;
        window.resize(sizes[at].width, sizes[at].height);
        if (!run.Yield()) return false;
    }
    return true;
}

/// The program's windows that can be seen; menus and tooltips are none.
std::vector<QPointer<QWidget>> VisibleWindows() {
    std::vector<QPointer<QWidget>> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const auto type = window->windowType();
        if (window->isVisible() && (type == Qt::Window || type == Qt::Dialog)) windows.emplace_back(window);
    }
    return windows;
}

} // namespace

void FadeIn(QWidget& window, EffectHost& host, int target) {
    RunFade(window, &host, FadeInSteps(target, host.FadeSpeed, SizeOf(window), SizeOf(host.MainWindow())));
}

void FadeOut(QWidget& window, EffectHost& host) {
    RunFade(window, &host,
            FadeOutSteps(host.FadeIntensity, host.FadeSpeed, SizeOf(window), SizeOf(host.MainWindow())));
}

void FadeBetween(QWidget& window, int from, int to, int step) {
    RunFade(window, nullptr, FadeBetweenSteps(from, to, step));
}

void FadeOthersBetween(const QWidget& window, EffectHost& host, int from, int to, int step) {
    const QPointer<QWidget> mainWindow = &host.MainWindow();
    for (const QPointer<QWidget>& other : VisibleWindows()) {
        if (!mainWindow || host.Phase != ProgramPhase::Running) return;
        if (other && other != &window && other->isVisible()) FadeBetween(*other, from, to, step);
    }
}

void ShowWithFade(QWidget& window, EffectHost& host) {
    EffectState& state = EffectState::Of(window);
    state.RestoreCaption();
    state.RestoreSize();
    EffectRun run(window, &host);
    // The last closing left the window transparent. Without the compositing manager it would stay so.
    if (!SetWindowAlpha(window, 1)) window.setWindowOpacity(1.0);
    const QSize size = window.size();
    const QPoint place = window.pos();
    const bool isNew = !window.isVisible();
    if (!run.Yield()) return;
    // Undoes late events of the native window that was closed before.
    if (isNew) window.resize(size);
    if (isNew && window.testAttribute(Qt::WA_Moved)) window.move(place);
    if (window.isMinimized())
        window.showNormal();
    else
        window.show();
    window.raise();
    window.activateWindow();
    window.repaint();
    FadeIn(window, host, host.FadeIntensity);
}

void SmoothClose(QWidget& window, EffectHost& host) {
    if (LayeredWindowsAvailable()) return;
    if (host.SmoothCloseMainWindowOnly() && &window != &host.MainWindow()) return;
    EffectState& state = EffectState::Of(window);
    state.MarkCaption();
    SetLayeredStyle(window, false);
    const bool shrinks = window.isVisible() && !window.isMinimized() && !window.isMaximized();
    if (shrinks && !Shrink(window, host)) return;
    state.RestoreCaption();
}

void CloseProgramWithEffects(EffectHost& host, QTimer& refreshTimer,
                             const std::function<void()>& endProgram) {
    if (host.Phase != ProgramPhase::Running) return;
    host.Phase = ProgramPhase::Closing;
    const QPointer<QWidget> mainWindow = &host.MainWindow();
    const auto goesOn = [&] { return mainWindow && host.Phase == ProgramPhase::Closing; };

    refreshTimer.stop();
    SmoothClose(*mainWindow, host);
    for (const QPointer<QWidget>& window : VisibleWindows()) {
        if (!goesOn()) return;
        if (window && window != mainWindow && window->isVisible()) FadeOut(*window, host);
    }
    if (!goesOn()) return;
    FadeOut(*mainWindow, host);
    if (!goesOn()) return;
    host.Phase = ProgramPhase::Ended;
    endProgram();
}

} // namespace quillbay
