#pragma once

#include <string_view>
#include <system_error>

namespace quillbay {

/// FileSystem::TryToWrite of this computer, for folders that hold no user data yet.
[[nodiscard]] std::error_code TryToWriteInto(std::string_view folder);

} // namespace quillbay
