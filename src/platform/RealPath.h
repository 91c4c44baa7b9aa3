#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>

namespace quillbay {

/// FileSystem::RealPath of this computer, for what is no user data.
Result<std::string> FindRealPath(std::string_view path);

} // namespace quillbay
