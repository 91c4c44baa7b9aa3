#include "platform/window/ProgramWindow.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>

#include <dwmapi.h>
#include <shobjidl.h>

namespace quillbay {

namespace {

constexpr wchar_t kIdentity[] = L"Quillbay.Quillbay"; // the Start menu's entry has the same
constexpr wchar_t kMainWindowMark[] = L"Quillbay.MainWindow";

HWND NativeWindow(const QWidget& window) { return reinterpret_cast<HWND>(window.winId()); }

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Tells the window manager about each window as it is shown, and about all when the palette changes.
class TitleBars : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto type = event->type();
        if (type != QEvent::Show && type != QEvent::PaletteChange) return false;
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->isWindow() && widget->testAttribute(Qt::WA_WState_Created)) Apply(*widget);
        return false;
    }

private:
    static void Apply(const QWidget& window) {
        constexpr DWORD kUseDarkMode = 20; // DWMWA_USE_IMMERSIVE_DARK_MODE, not in every set of headers
        const BOOL dark = IsDark(window.palette());
        DwmSetWindowAttribute(NativeWindow(window), kUseDarkMode, &dark, sizeof dark);
    }
};

} // namespace

void PrepareProgram() {
    SetCurrentProcessExplicitAppUserModelID(kIdentity);
    DisableProcessWindowsGhosting();
}

void MarkMainWindow(QWidget& window) { SetPropW(NativeWindow(window), kMainWindowMark, HANDLE(1)); }

bool RaiseMainWindow() {
    HWND found = nullptr;
    EnumWindows(
        [](HWND window, LPARAM result) -> BOOL {
            if (!GetPropW(window, kMainWindowMark)) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    if (!found) return false;
    if (IsIconic(found)) ShowWindow(found, SW_RESTORE);
    return SetForegroundWindow(found) != 0;
}

void LetTitleBarsFollowPalette() { qApp->installEventFilter(new TitleBars(qApp)); }

} // namespace quillbay
