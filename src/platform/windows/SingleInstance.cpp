#include "platform/SingleInstance.h"

#include "platform/windows/Handle.h"

#include <array>
#include <cstddef>
#include <sddl.h>
#include <string>

namespace quillbay {

namespace {

/// Of the user who runs the program, as text. Two users may have one name: a local one and one of a domain.
std::wstring UserSid() {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return {};
    const Handle token(opened);
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
    DWORD size = 0;
    if (!GetTokenInformation(token.Get(), TokenUser, user.data(), DWORD{user.size()}, &size)) return {};
    wchar_t* text = nullptr;
    if (!ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text)) return {};
    std::wstring sid = text;
    LocalFree(text);
    return sid;
}

class MutexInstance : public SingleInstance {
public:
    explicit MutexInstance(Handle mutex) : mutex_(std::move(mutex)) {}

private:
    Handle mutex_;
};

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::Acquire() {
    // A user may be logged on more than once.
    const std::wstring name = L"Global\\quillbay." + UserSid();
    Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    const DWORD outcome = GetLastError();
    // Denied: one that runs with more rights holds the name.
    if (outcome == ERROR_ALREADY_EXISTS || outcome == ERROR_ACCESS_DENIED) return nullptr;
    return std::make_unique<MutexInstance>(std::move(mutex));
}

} // namespace quillbay
