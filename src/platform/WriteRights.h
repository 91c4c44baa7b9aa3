#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// What a user can do where this program is not allowed to write.
namespace quillbay {

/// Whole sentences about a folder in which no file could be made: on Windows how to get the rights, on POSIX
/// whose folder it is.
std::string HowToGetRights(std::string_view folder);

/// Whether the program, started again, could have more rights: on Windows while it does not run as
/// administrator.
bool CanStartAsAdministrator();

/// Starts the program once more, as administrator; the system asks the user first. operation_canceled when
/// the user does not want it.
[[nodiscard]] std::error_code StartAsAdministrator();

} // namespace quillbay
