#pragma once

#include <string>
#include <system_error>

namespace quillbay {

/// Gives the file `to` the access rights of `from`: its own ones, and whether it inherits those of its
/// folder. Long paths. Fails where the file system has no rights.
std::error_code CopyRights(const std::wstring& from, const std::wstring& to);

} // namespace quillbay
