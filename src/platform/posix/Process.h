#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

/// Other programs, started without a shell between.
namespace quillbay {

struct Command {
    std::vector<std::string> arguments;                           ///< the first is the program's own path
    std::string workingFolder;                                    ///< empty: that of this program
    std::vector<std::pair<std::string, std::string>> environment; ///< variables that differ
};

/// The full path of a program, looked for in `PATH`; empty when there is none.
std::string FindProgram(std::string_view name);

/// Starts a program that outlives this one: in a session of its own, without this program's descriptors, its
/// standard ones being /dev/null, and never waiting to be reaped. An error when it could not be started.
std::error_code StartDetached(const Command& command);

/// Starts a program as a child, which the caller has to wait for.
Result<pid_t> StartChild(const Command& command);

/// Waits for a child to end.
void WaitForChild(pid_t child);

} // namespace quillbay
