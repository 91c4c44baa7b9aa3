#pragma once

#include <string_view>

/// Which names every system keeps as they are, so that a library can move from one to the other.
namespace quillbay {

enum class NameFault {
    None,
    Character, ///< one that Windows allows in no name: a separator, a control character
    Changed,   ///< Windows would keep it differently (a final dot or blank) or takes it for a device
    TooLong,   ///< over 255 bytes
};

/// Of one component of a path; an empty one is Changed.
NameFault FindNameFault(std::string_view name);

} // namespace quillbay
