#include "platform/windows/ProgramFile.h"

#include "platform/windows/WidePath.h"

#include <windows.h>

namespace quillbay {

std::wstring FindProgramFile() {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) return WithoutLongPrefix(file.substr(0, length));
        file.resize(file.size() * 2);
    }
}

} // namespace quillbay
