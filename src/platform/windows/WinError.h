#pragma once

#include <system_error>

namespace quillbay {

/// A Windows error code as the std::errc that says the same; one without a counterpart keeps its number, in
/// the system's category.
std::error_code WinError(unsigned long code);

/// What GetLastError says; never "no error".
std::error_code LastError();

} // namespace quillbay
