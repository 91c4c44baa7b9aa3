#include "platform/window/LayeredWindow.h"

#include <QWidget>

#include <algorithm>
#include <windows.h>

namespace quillbay {

namespace {

constexpr LONG kLayeredStyle = 0x80000;
constexpr DWORD kAlphaFlag = 2;

using SetAttributes = BOOL(WINAPI*)(HWND, COLORREF, BYTE, DWORD);

/// A function of a system library for as long as this object lives; none when it does not exist.
class LibraryFunction {
public:
    LibraryFunction(const char* functionName, const wchar_t* libraryName)
        : library_(LoadLibraryW(libraryName)),
          address_(library_ ? GetProcAddress(library_, functionName) : nullptr) {}
    ~LibraryFunction() {
        if (library_) FreeLibrary(library_);
    }
    LibraryFunction(const LibraryFunction&) = delete;
    LibraryFunction& operator=(const LibraryFunction&) = delete;

    bool Exists() const { return address_ != nullptr; }
    /// FARPROC stands for every signature; the detour over void* says that the cast is meant.
    SetAttributes Address() const {
        return reinterpret_cast<SetAttributes>(reinterpret_cast<void*>(address_));
    }

private:
    HMODULE library_;
    FARPROC address_;
};

LibraryFunction FindSetAttributes() { return {"SetLayeredWindowAttributes", L"user32"}; }

HWND Handle(QWidget& window) { return reinterpret_cast<HWND>(window.winId()); }

} // namespace

bool LayeredWindowsAvailable() { return FindSetAttributes().Exists(); }

void SetLayeredStyle(QWidget& window, bool on) {
    const LONG style = GetWindowLongW(Handle(window), GWL_EXSTYLE);
    SetWindowLongW(Handle(window), GWL_EXSTYLE, on ? style | kLayeredStyle : style & ~kLayeredStyle);
}

bool SetWindowAlpha(QWidget& window, int opacity) {
    const auto setAttributes = FindSetAttributes();
    if (!setAttributes.Exists()) return false;
    SetLayeredStyle(window, true);
    const auto alpha = static_cast<BYTE>(std::clamp(opacity, 0, 255));
    return setAttributes.Address()(Handle(window), 0, alpha, kAlphaFlag) != 0;
}

} // namespace quillbay
