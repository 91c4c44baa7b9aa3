#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <system_error>
#include <vector>

/// A new version of a mod in the place of the old one, so that at every moment one of the two can be put
/// there whole.
namespace quillbay {

/// The folder in which mods come into being, on the volume of `mods` so that one rename puts them there.
inline constexpr std::string_view kStagingName = "~quillbay.add";

/// Where that folder may be: beside `mods` (beside what it leads to where it is a link), or in it where that
/// is another volume or cannot be written to. No list shows it.
std::vector<std::string> StagingPlaces(const FileSystem& files, const std::string& modLibrary);

/// Where in it the new version waits, as its `name`.
std::string WaitingPlace(const std::string& staging, std::string_view name);

/// Puts the waiting version into the place of `modLibrary\name`, with what the old one holds of the game:
/// `Backup`, `Changed`, and the addons that have one of them. On failure everything is as it was, or, where
/// even that fails, RecoverMods has to do it.
std::error_code ReplaceMod(FileSystem& files, const std::string& staging, const std::string& modLibrary,
                           const std::string& name);

/// Puts back every mod whose replacement did not come to its end, then removes the folder `staging`. What
/// cannot be put back stays there, for the next time.
std::error_code RecoverMods(FileSystem& files, const std::string& staging, const std::string& modLibrary);

/// The same wherever it may be; for the start of the program.
void RecoverMods(FileSystem& files, const std::string& modLibrary);

} // namespace quillbay
