#include "platform/ShellOpener.h"

#include "platform/PathText.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <windows.h>

namespace quillbay {

namespace {

/// The shell takes no long paths, and a doubled separator leads it astray; an address stays as it is.
Result<std::wstring> ShellText(std::string_view target) {
    const bool isPath =
        target.size() >= 2 && (target[1] == ':' || (IsSeparator(target[0]) && IsSeparator(target[1])));
    if (!isPath) return WidenText(target);
    const auto path = LongPath(target);
    if (!path) return path.Error();
    return WithoutLongPrefix(*path);
}

/// Some of the shell's extensions are COM objects.
class ComScope {
public:
    ComScope()
        : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ComScope(const ComScope&) = delete;
    ~ComScope() {
        if (entered_) CoUninitialize();
    }

private:
    bool entered_;
};

class WindowsShellOpener : public ShellOpener {
public:
    std::error_code OpenWithShell(std::string_view target, std::string_view workingFolder,
                                  std::string_view) override {
        const auto file = ShellText(target);
        if (!file) return file.Error();
        const auto folder = ShellText(workingFolder);
        if (!folder) return folder.Error();
        const ComScope com;
        SHELLEXECUTEINFOW how{};
        how.cbSize = sizeof how;
        // The caller reports a failure; the shell must show no box of its own.
        how.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
        how.lpVerb = L"open";
        how.lpFile = file->c_str();
        how.lpDirectory = folder->empty() ? nullptr : folder->c_str();
        how.nShow = SW_SHOWNORMAL;
        if (ShellExecuteExW(&how)) return {};
        if (GetLastError() != ERROR_NO_ASSOCIATION) return LastError();
        // Let the user choose a program, as Explorer does.
        how.lpVerb = L"openas";
        return ShellExecuteExW(&how) ? std::error_code{} : LastError();
    }
};

} // namespace

std::unique_ptr<ShellOpener> MakeShellOpener() { return std::make_unique<WindowsShellOpener>(); }

} // namespace quillbay
