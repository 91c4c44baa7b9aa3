#pragma once

#include <string_view>
#include <system_error>

namespace quillbay {

/// A Windows error code with the system's own sentence, in UTF-8. It equals the std::errc that says the same,
/// where there is one.
std::error_code WinError(unsigned long code);

/// What GetLastError says; never "no error".
std::error_code LastError();

/// What a function of the native system says; never "no error".
std::error_code StatusError(long status);

} // namespace quillbay
