#include "platform/WriteRights.h"

#include "platform/windows/Elevation.h"
#include "platform/windows/Handle.h"
#include "platform/windows/ProgramFile.h"
#include "platform/windows/WinError.h"

#include <shellapi.h>

namespace quillbay {

bool IsElevated() {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return false;
    const Handle token(opened);
    TOKEN_ELEVATION elevation{};
    DWORD size = sizeof elevation;
    return GetTokenInformation(token.Get(), TokenElevation, &elevation, size, &size) &&
           elevation.TokenIsElevated != 0;
}

std::string HowToGetRights(std::string_view) {
    if (IsElevated())
        return "Windows does not let Quillbay write there, not even as administrator. Move the game to "
               "another "
               "folder.";
    return "Windows does not let Quillbay write there. Start it as administrator, or move the game out of "
           "Program Files.";
}

bool CanStartAsAdministrator() { return !IsElevated(); }

std::error_code StartAsAdministrator() {
    const std::wstring file = FindProgramFile();
    SHELLEXECUTEINFOW how{};
    how.cbSize = sizeof how;
    how.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    how.lpVerb = L"runas";
    how.lpFile = file.c_str();
    how.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&how) ? std::error_code{} : LastError();
}

} // namespace quillbay
