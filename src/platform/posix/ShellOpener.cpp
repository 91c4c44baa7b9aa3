#include "platform/ShellOpener.h"

#include "platform/CaseFold.h"
#include "platform/RealPath.h"
#include "platform/posix/NativePath.h"
#include "platform/posix/Process.h"
#include "platform/posix/WinePrefix.h"

#include <algorithm>
#include <memory>

namespace quillbay {

namespace {

/// "https:", "mailto:" and the like: at least two letters, so that no drive is one.
bool IsWebAddress(std::string_view target) {
    const auto colon = target.find(':');
    return colon != std::string_view::npos && colon >= 2 &&
           std::all_of(target.begin(), target.begin() + static_cast<std::ptrdiff_t>(colon),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

Result<Command> BatchCommand(const std::string& file, std::string_view chosenPrefix) {
    Command command;
    const auto wine = FindProgram("wine");
    if (wine.empty()) return std::errc::no_such_file_or_directory;
    const auto real = FindRealPath(file);
    if (!real) return real.Error();
    command.arguments = {wine, "start", "/unix", *real};
    const auto prefix = chosenPrefix.empty() ? PrefixHolding(*real) : std::string(chosenPrefix);
    if (!prefix.empty()) command.environment = {{"WINEPREFIX", prefix}};
    return command;
}

Result<Command> DesktopCommand(std::string target) {
    const auto opener = FindProgram("xdg-open");
    if (opener.empty()) return std::errc::no_such_file_or_directory;
    return Command{{opener, std::move(target)}, {}, {}};
}

Result<Command> MakeCommand(std::string_view target, std::string_view prefix) {
    if (IsWebAddress(target)) return DesktopCommand(std::string(target));
    auto path = FindArgumentPath(target);
    if (!path) return path.Error();
    return EndsFolded(*path, ".bat") ? BatchCommand(*path, prefix) : DesktopCommand(std::move(*path));
}

class DesktopShellOpener : public ShellOpener {
public:
    std::error_code OpenWithShell(std::string_view target, std::string_view workingFolder,
                                  std::string_view prefix) override {
        auto command = MakeCommand(target, prefix);
        if (!command) return command.Error();
        if (!workingFolder.empty() && !IsWebAddress(target)) {
            auto folder = FindArgumentPath(workingFolder);
            if (!folder) return folder.Error();
            command->workingFolder = std::move(*folder);
        }
        return StartDetached(*command);
    }
};

} // namespace

std::unique_ptr<ShellOpener> MakeShellOpener() { return std::make_unique<DesktopShellOpener>(); }

} // namespace quillbay
