#pragma once

#include "Measure.h"

#include <filesystem>
#include <vector>

namespace quillbay {

/// Taking archives of `game` into a library, beside the programs that unpack them. `folder` is made.
std::vector<Measurement> ArchiveJobs(const std::filesystem::path& game, const std::filesystem::path& folder);

} // namespace quillbay
