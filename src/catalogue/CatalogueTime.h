#pragma once

#include "platform/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// A file's time as the catalogue compares it: local, to the second, between the years 100 and 9999, which
/// its text can hold.
LocalTime CatalogueTime(FileTime time);

/// The US English form, whatever the user's language is, for example "11/3/2001 12:37:30 AM".
std::string FormatCatalogueTime(LocalTime time);

/// Reads that form back. Numbers may have leading zeros; a time without AM or PM is one of 24 hours, seconds
/// and the whole time may be missing, and years of two digits are those from 1930 to 2029. None for anything
/// else.
std::optional<LocalTime> ParseCatalogueTime(std::string_view text);

} // namespace quillbay
