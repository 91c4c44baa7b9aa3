#include "platform/windows/Security.h"

#include "platform/windows/WinError.h"

#include <aclapi.h>
#include <memory>
#include <windows.h>

namespace quillbay {

std::error_code CopyRights(const std::wstring& from, const std::wstring& to) {
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR owned = nullptr;
    const DWORD read = GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                             nullptr, &rights, nullptr, &owned);
    const std::unique_ptr<void, decltype(&LocalFree)> descriptor(owned, &LocalFree);
    if (read != ERROR_SUCCESS) return WinError(read);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (!GetSecurityDescriptorControl(owned, &control, &revision)) return LastError();
    const DWORD inherits = control & SE_DACL_PROTECTED ? PROTECTED_DACL_SECURITY_INFORMATION
                                                       : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring path = to; // the call does not promise to leave it alone
    const DWORD set = SetNamedSecurityInfoW(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inherits,
                                            nullptr, nullptr, rights, nullptr);
    return set == ERROR_SUCCESS ? std::error_code{} : WinError(set);
}

} // namespace quillbay
