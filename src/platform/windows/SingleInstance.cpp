#include "platform/SingleInstance.h"

#include "platform/windows/Handle.h"

#include <string>

namespace quillbay {

namespace {

std::wstring UserName() {
    constexpr DWORD kLongestName = 257; // UNLEN and the final NUL
    std::wstring name(kLongestName, L'\0');
    DWORD size = kLongestName;
    if (!GetUserNameW(name.data(), &size) || size == 0) return {};
    name.resize(size - 1);
    return name;
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
    const std::wstring name = L"Global\\quillbay." + UserName();
    Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    const DWORD outcome = GetLastError();
    // Denied: one that runs with more rights holds the name.
    if (outcome == ERROR_ALREADY_EXISTS || outcome == ERROR_ACCESS_DENIED) return nullptr;
    return std::make_unique<MutexInstance>(std::move(mutex));
}

} // namespace quillbay
