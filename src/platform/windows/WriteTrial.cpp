#include "platform/WriteTrial.h"

#include "platform/windows/Handle.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WinError.h"

namespace quillbay {

std::error_code TryToWriteInto(std::string_view folder) {
    const auto path = LongPath(folder);
    if (!path) return path.Error();
    // What access lists say is not the whole truth: only a file that could be made is. The system removes it
    // with its handle, even if this process is ended.
    const Handle made(CreateFileW(InFolder(*path, L"~quillbay.try").c_str(), GENERIC_WRITE | DELETE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE,
                                  nullptr));
    return made ? std::error_code{} : LastError();
}

} // namespace quillbay
