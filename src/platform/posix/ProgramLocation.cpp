#include "platform/ProgramLocation.h"

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

ProgramPlaces FindProgramPlaces() {
    ProgramPlaces places;
    places.user = UserFolder();
    std::array<char, PATH_MAX> text{};
    const auto length = ::readlink("/proc/self/exe", text.data(), text.size());
    if (length <= 0) return places; // no /proc
    const std::string program(text.data(), static_cast<std::size_t>(length));
    const std::size_t at = program.rfind('/');
    places.executable = program.substr(0, at == 0 ? 1 : at);
    places.isForPrograms = program.starts_with("/usr/");
    return places;
}

std::string MakeProgramDirectory(const ProgramPlaces& places) {
    std::string folder = ChooseProgramFolder(places, IsWritableFolder);
    std::error_code ignored;
    if (folder == places.user) fs::create_directories(folder, ignored);
    return folder;
}

} // namespace quillbay
