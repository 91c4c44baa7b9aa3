#pragma once

#include "Measure.h"

#include <filesystem>
#include <vector>

namespace quillbay {

/// The comparisons of the windows that read whole games and libraries. What they work on is made in `folder`
/// when the first of them is measured.
std::vector<Measurement> ToolJobs(const std::filesystem::path& folder);

} // namespace quillbay
