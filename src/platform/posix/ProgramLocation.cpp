#include "platform/ProgramLocation.h"

#include "platform/posix/ProgramFolder.h"

#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace quillbay {

namespace {

namespace fs = std::filesystem;

/// Where freedesktop.org places data of a user; a relative `$XDG_DATA_HOME` does not count there.
fs::path UserFolder() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && data[0] == '/') return fs::path(data) / "quillbay";
    const char* home = std::getenv("HOME");
    return fs::path(home ? home : "/") / ".local/share/quillbay";
}

} // namespace

std::string ChooseProgramFolder(const std::string& executableFolder) {
    std::error_code ignored;
    const auto isWritable = [](const std::string& folder) { return ::access(folder.c_str(), W_OK) == 0; };
    // Of an installed program a start by the administrator may have left `mods` there, which is of no use to
    // others.
    if (!executableFolder.empty() && (isWritable(executableFolder) || isWritable(executableFolder + "/mods")))
        return executableFolder;
    const fs::path own = UserFolder();
    fs::create_directories(own, ignored);
    return own;
}

std::string FindProgramDirectory() {
    std::array<char, PATH_MAX> text{};
    const auto length = ::readlink("/proc/self/exe", text.data(), text.size());
    if (length <= 0) return ChooseProgramFolder({}); // no /proc
    const std::string program(text.data(), static_cast<std::size_t>(length));
    const std::size_t at = program.rfind('/');
    return ChooseProgramFolder(program.substr(0, at == 0 ? 1 : at));
}

} // namespace quillbay
