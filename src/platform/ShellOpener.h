#pragma once

#include <memory>
#include <string_view>
#include <system_error>

namespace quillbay {

/// Hands files, folders and web addresses to the desktop.
class ShellOpener {
public:
    virtual ~ShellOpener() = default;

    /// Opens `target` with the program the user has for it, detached from this one. `workingFolder` is where
    /// a batch file starts; empty for none. On POSIX a batch file (`.bat`) starts under Wine, in the Wine
    /// prefix `prefix`, or where that is empty in the one that holds it; everything else goes to `xdg-open`,
    /// addresses from no particular folder.
    /// no_such_file_or_directory when the opener itself is missing.
    [[nodiscard]] virtual std::error_code OpenWithShell(std::string_view target,
                                                        std::string_view workingFolder = {},
                                                        std::string_view prefix = {}) = 0;
};

std::unique_ptr<ShellOpener> MakeShellOpener();

} // namespace quillbay
