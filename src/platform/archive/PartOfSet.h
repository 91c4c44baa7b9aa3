#pragma once

#include <string_view>

namespace quillbay {

/// True when the name, or the last bytes of a zip, say that a file which could not be read is only a part.
bool LooksLikePart(std::string_view fileName, std::string_view tail);

} // namespace quillbay
