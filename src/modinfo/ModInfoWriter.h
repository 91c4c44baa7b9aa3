#pragma once

#include "modinfo/ModInfo.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillbay {

enum class ModInfoOutcome {
    Written,
    Unencodable, ///< a text holds a character outside the system code page
    TooLong,     ///< a text could not be shown whole
    OldTooLong,  ///< the file holds a value that is not shown whole and would be lost
    Failed,      ///< the folder or the old file cannot be read, or the new one not written
};

struct ModInfoResult {
    ModInfoOutcome outcome = ModInfoOutcome::Written;
    std::string character;                ///< of Unencodable, UTF-8
    std::vector<std::string_view> fields; ///< of TooLong and OldTooLong: their names
    std::error_code error;                ///< of Failed
};

/// The path of the ModInfo.txt that WriteModInfo would replace; none when it would make one.
std::optional<std::string> FindModInfo(const FileSystem& files, std::string_view modFolder);

/// Makes the ModInfo.txt of a mod, or replaces it as a whole, also one in another letter case: the one whose
/// values are shown. Unless the outcome is Written, nothing has changed. The mod's folder must exist.
ModInfoResult WriteModInfo(FileSystem& files, std::string_view modFolder, const ModInfoCaptions& values);

} // namespace quillbay
