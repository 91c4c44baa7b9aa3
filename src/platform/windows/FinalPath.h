#pragma once

#include "platform/Result.h"
#include "platform/windows/Handle.h"

#include <string>

namespace quillbay {

/// The long path (WidePath.h) of what a long path leads to, without links and in its stored spelling.
Result<std::wstring> FindFinalPath(const std::wstring& longPath);

/// A path of the open entry that ends in its name as it is stored; empty where the system does not tell.
std::wstring StoredPathOf(const Handle& entry);

} // namespace quillbay
