#pragma once

#include <string>
#include <string_view>

namespace quillbay {

/// The name of an entry as text, from what the unpacking library makes of it. Names in a zip are in code page
/// 437 unless they are marked as UTF-8, and the library takes them so (`fromCodePage437`); but some programs
/// write UTF-8 without the mark, so what came from bytes that are UTF-8 is read as such. A name that is not
/// UTF-8 is taken for code page 437.
std::string EntryNameText(std::string_view name, bool fromCodePage437);

/// No overlong forms, no surrogates.
bool IsUtf8(std::string_view text);

} // namespace quillbay
