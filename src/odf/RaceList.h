#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// The races that a `race` line may name (UTF-8): an empty text, then one entry for each `race` line of the
/// races file (`other\races.odf` below the `odf` folder) in its order. The entry is empty when the race file
/// is missing, has no name, or would lie outside the folder `other`. Without a races file only the first.
std::vector<std::string> BuildRaceList(const FileSystem& files, std::string_view odfFolder);

/// True when the races file and every race file that it names can be read.
bool ProbeRaceFiles(const FileSystem& files, std::string_view odfFolder);

} // namespace quillbay
