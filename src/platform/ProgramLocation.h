#pragma once

#include <string>

namespace quillbay {

/// The folder of the running executable, links resolved, without a final separator; a drive root `C:\`
/// gives `C:`.
std::string FindProgramDirectory();

} // namespace quillbay
