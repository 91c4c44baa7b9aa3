#pragma once

#include "library/InstalledMods.h"
#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// What becomes of a `Backup` that nobody needs any more.
namespace quillbay {

/// Ends the state of being installed by one rename of `Backup`. Where the folder cannot be renamed (it is in
/// use, or belongs to the lower layer of an overlay) a record that says so ends it. `remains` is what is to
/// be swept: nobody's data any more. On failure nothing has changed.
[[nodiscard]] std::error_code EndInstalledState(FileSystem& files, const InstalledMod& mod,
                                                std::string& remains);

/// Removes such remains. A folder that cannot be removed keeps, or gets again, the record that says what it
/// is.
[[nodiscard]] std::error_code SweepRemains(FileSystem& files, const std::string& remains);

/// Sweeps what could not be swept when it was given up, since a program had something in it open. True when a
/// `Backup` of one of the rows is gone now.
bool SweepGivenUpBackups(FileSystem& files, std::string_view modLibrary, const std::vector<ModRow>& rows);

} // namespace quillbay
