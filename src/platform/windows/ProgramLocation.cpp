#include "platform/ProgramLocation.h"

#include "platform/PathText.h"
#include "platform/RealPath.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"

#include <windows.h>

namespace quillbay {

namespace {

std::string ProgramFile() {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) return NarrowText(WithoutLongPrefix(file.substr(0, length)));
        file.resize(file.size() * 2);
    }
}

} // namespace

std::string FindProgramDirectory() {
    const std::string file = ProgramFile();
    return std::string(Parent(FindRealPath(file).ValueOr(file)));
}

} // namespace quillbay
