#pragma once

#include <string>

namespace quillbay {

/// The path of the running executable, as the system has it and without the `\\?\` of long paths.
std::wstring FindProgramFile();

} // namespace quillbay
