#pragma once

#include <string>

namespace quillbay {

/// Where `mods` and `FileList.txt` lie: beside the executable when the user can write to that folder or
/// to the `mods` in it (a portable program), else in the user's own `$XDG_DATA_HOME/quillbay` (an installed
/// one), which is made when it is missing. An unknown folder is empty.
std::string ChooseProgramFolder(const std::string& executableFolder);

} // namespace quillbay
