#pragma once

#include "platform/Result.h"

#include <string>

namespace quillbay {

/// The text of a symbolic link or junction, as its maker wrote it; `invalid_argument` for anything else.
Result<std::wstring> ReadLinkText(const std::wstring& longPath);

} // namespace quillbay
