#include "platform/DosPath.h"

#include "platform/RealPath.h"
#include "platform/posix/LauncherPrefixes.h"
#include "platform/posix/WinePrefix.h"

#include <algorithm>

namespace quillbay {

namespace {

/// The prefix that holds a folder; the user's own one for a folder outside any.
std::string PrefixFor(const std::string& realPath) {
    auto prefix = PrefixHolding(realPath);
    return prefix.empty() ? EnvironmentPrefix() : prefix;
}

/// The drive of the prefix that holds the folder, unless that drive is `/`, else the prefix's `drive_c`.
std::string OwnDrive(std::string_view folder) {
    const auto real = FindRealPath(folder).ValueOr(std::string(folder));
    const auto prefix = PrefixFor(real);
    const auto drives = DrivesOf(prefix);
    const auto* drive = DriveHolding(drives, real);
    return drive != nullptr && drive->root != "/" ? drive->root : prefix + "/drive_c";
}

} // namespace

std::string NativePath(std::string_view dosPath) { return NativePathIn(EnvironmentPrefix(), dosPath); }

Result<std::string> ShortPath(std::string_view folder, std::string_view prefix) {
    const auto real = FindRealPath(folder);
    if (!real) return real.Error();
    const auto drives = DrivesOf(prefix.empty() ? PrefixFor(*real) : std::string(prefix));
    const auto* drive = DriveHolding(drives, *real);
    if (drive == nullptr) return std::errc::no_such_file_or_directory;
    std::string rest = drive->root == "/" ? *real : real->substr(drive->root.size());
    std::replace(rest.begin(), rest.end(), '/', '\\');
    if (rest.empty()) rest = "\\";
    return std::string{drive->letter, ':'} + rest;
}

std::vector<std::string> SearchRoots(std::string_view programDirectory) {
    std::vector<std::string> folders = {EnvironmentPrefix() + "/drive_c"};
    if (!PrefixIsChosen()) {
        for (const auto& prefix : LauncherPrefixes())
            folders.push_back(prefix.path + "/drive_c");
    }
    folders.push_back(OwnDrive(programDirectory));
    std::vector<std::string> roots;
    for (const auto& folder : folders) {
        const auto real = FindRealPath(folder);
        if (real && std::ranges::find(roots, *real) == roots.end()) roots.push_back(*real);
    }
    return roots;
}

std::string DriveRootText(std::string_view) { return "C:\\"; }

std::string FirstFolder(std::string_view) { return HomeFolder(); }

} // namespace quillbay
