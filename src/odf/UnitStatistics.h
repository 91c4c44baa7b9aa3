#pragma once

#include "platform/FileSystem.h"

#include <array>
#include <string>
#include <string_view>

namespace quillbay {

/// The keys of a unit's ODF file that the analyzer shows, in the order of its labels.
inline constexpr std::array<std::string_view, 10> kUnitKeys = {
    "unitName",      "race",      "buildTime",   "officerCost", "crewCost",
    "dilithiumCost", "metalCost", "latinumCost", "maxHealth",   "shieldRate",
};

/// Captions in the order of kUnitKeys, UTF-8.
using UnitCaptions = std::array<std::string, kUnitKeys.size()>;

/// Of longer values only the beginning is shown.
inline constexpr std::size_t kMaxUnitValueCharacters = 1000;

/// What the bytes of an ODF file say: of the last line that begins with a key and " =" the key, " = " and the
/// raw rest of the line behind one more character; a text that says so where no line does.
UnitCaptions FindUnitStatistics(std::string_view odf);

/// The same for a file. One that cannot be read counts as empty; of one above 64 MB only the beginning is
/// looked at.
UnitCaptions ReadUnitStatistics(const FileSystem& files, std::string_view file);

} // namespace quillbay
