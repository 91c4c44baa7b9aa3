#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Wine prefixes: folders that hold a Windows system, with its drives as links in `dosdevices`.
namespace quillbay {

struct DosDrive {
    char letter = 'C'; ///< upper case
    std::string root;  ///< the folder it leads to, links resolved
};

/// `$HOME`, else the home folder of the user's entry; empty when there is none.
std::string HomeFolder();

/// True when `$WINEPREFIX` is set, so that no other prefix counts.
bool PrefixIsChosen();

/// `$WINEPREFIX`, else `~/.wine`, whether it exists or not.
std::string EnvironmentPrefix();

/// NativePath by the drives of one prefix.
std::string NativePathIn(const std::string& prefix, std::string_view dosPath);

/// The nearest folder from `realPath` upwards that is a prefix; empty when there is none.
std::string PrefixHolding(std::string_view realPath);

/// The drives of a prefix that lead to a folder.
std::vector<DosDrive> DrivesOf(const std::string& prefix);

/// The drive whose root is the nearest folder above `realPath`, another one than `Z:` if there are two of
/// them; null when none holds the path.
const DosDrive* DriveHolding(const std::vector<DosDrive>& drives, std::string_view realPath);

} // namespace quillbay
