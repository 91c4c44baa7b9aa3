#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// Some bytes of a registry file from an offset on, at least two while there are as many, which stay until
/// the next call; none at the end or after an error.
using RegPieceAt = std::function<std::string_view(std::uint64_t offset)>;

struct OrderedRegResult {
    std::optional<std::string> value; ///< as SystemRegSearch finds it
    bool ordered = true; ///< false: the keys stand in another order, so that only a whole reading tells
};

/// Looks for a string value as SystemRegSearch does, but reads only a few pieces of the file, whatever its
/// size. Wine writes keys in the order of their names: component by component, in lower case, a key before
/// those in it. Some keys are compared to see that they stand so. `key` is ASCII.
OrderedRegResult FindInOrderedReg(std::uint64_t fileSize, const RegPieceAt& pieceAt, std::string_view key,
                                  std::string_view valueName);

} // namespace quillbay
