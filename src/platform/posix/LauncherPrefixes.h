#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillbay {

struct LauncherPrefix {
    std::string path;
    std::uint64_t registryBytes = 0; ///< of its `system.reg`
};

/// The Wine prefixes that Steam, Heroic, Lutris, Bottles and PlayOnLinux keep for this user, in his home and
/// in those of their Flatpaks: each once, without EnvironmentPrefix(), that with the newest `system.reg`
/// first.
std::vector<LauncherPrefix> LauncherPrefixes();

} // namespace quillbay
