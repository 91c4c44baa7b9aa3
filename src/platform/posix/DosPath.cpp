#include "platform/DosPath.h"

#include "platform/PathText.h"
#include "platform/RealPath.h"
#include "platform/posix/WinePrefix.h"

#include <algorithm>

namespace quillbay {

namespace {

bool IsDosPath(std::string_view path) {
    if (path.size() < 2 || path[1] != ':' || (path.size() > 2 && !IsSeparator(path[2]))) return false;
    const char letter = static_cast<char>(path[0] & ~0x20);
    return letter >= 'A' && letter <= 'Z';
}

/// The prefix that holds a folder; the user's own one for a folder outside any.
std::string PrefixFor(const std::string& realPath) {
    auto prefix = PrefixHolding(realPath);
    return prefix.empty() ? EnvironmentPrefix() : prefix;
}

} // namespace

std::string NativePath(std::string_view dosPath) {
    if (!IsDosPath(dosPath)) return std::string(dosPath);
    const char letter = static_cast<char>(dosPath[0] & ~0x20);
    for (auto& drive : DrivesOf(EnvironmentPrefix())) {
        if (drive.letter != letter) continue;
        std::string rest(dosPath.substr(2));
        std::replace(rest.begin(), rest.end(), '\\', '/');
        return drive.root == "/" && !rest.empty() ? rest : drive.root + rest;
    }
    return std::string(dosPath);
}

Result<std::string> ShortPath(std::string_view folder) {
    const auto real = FindRealPath(folder);
    if (!real) return real.Error();
    const auto drives = DrivesOf(PrefixFor(*real));
    const auto* drive = DriveHolding(drives, *real);
    if (drive == nullptr) return std::errc::no_such_file_or_directory;
    std::string rest = drive->root == "/" ? *real : real->substr(drive->root.size());
    std::replace(rest.begin(), rest.end(), '/', '\\');
    if (rest.empty()) rest = "\\";
    return std::string{drive->letter, ':'} + rest;
}

std::string SearchRoot(std::string_view programDirectory) {
    const auto real = FindRealPath(programDirectory).ValueOr(std::string(programDirectory));
    const auto prefix = PrefixFor(real);
    const auto drives = DrivesOf(prefix);
    const auto* drive = DriveHolding(drives, real);
    return drive != nullptr && drive->root != "/" ? drive->root : prefix + "/drive_c";
}

std::string DriveRootText(std::string_view) { return "C:\\"; }

} // namespace quillbay
