#pragma once

#include "help/ReadmeTopics.h"

#include <span>

namespace quillbay {

/// The topics under "Manager menu" and under "Mod menu", these two included.
std::span<const ReadmeTopic> ManagerTopics();
std::span<const ReadmeTopic> ModTopics();

} // namespace quillbay
