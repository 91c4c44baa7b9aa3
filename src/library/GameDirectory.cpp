#include "library/GameDirectory.h"

#include "library/FindEntry.h"
#include "platform/DosPath.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

// Written by the game's installer.
constexpr std::string_view kGameKey = R"(Software\Brightgate\Tempest II\v1.0)";
constexpr std::string_view kInstallPath = "INSTALLPATH";

} // namespace

RegisteredFolder ReadGameDirectory(const Registry& registry) {
    return registry.FindRegisteredFolder(kGameKey, kInstallPath);
}

bool IsExistingFolder(const FileSystem& files, std::string_view path) {
    if (path.empty() || path == kGameNotFound) return false;
    const auto found = files.Stat(path);
    return found && found->kind == EntryKind::Folder;
}

Candidate CheckCandidate(const FileSystem& files, std::string_view typed, std::string_view current) {
    if (!typed.empty() && IsSeparator(typed.back())) typed.remove_suffix(1);
    Candidate candidate{CandidateState::Rejected, std::string(typed)};
    const std::string_view name = LastComponent(typed);
    const bool hasSeparator = name.size() < typed.size();
    if (!hasSeparator || name.empty()) {
        candidate.state = CandidateState::NoName;
    } else if (typed != current && IsFolderSpelled(files, typed)) {
        candidate.state = CandidateState::Accepted;
    }
    return candidate;
}

std::string ChooserInfo(std::string_view programDirectory) {
    std::string info = "Info: This is the directory that the mod(s) will be installed to. ";
    info += DriveRootText(programDirectory);
    info +=
        R"(Program Files\Brightgate\Tempest II is the default one. )"
        "T2 Quillbay automatically detects where Tempest II is installed, so only change this if you know "
        "the directory is wrong or if you have another copy of T2 that you want the mod(s) to be installed "
        "in. PS: It is case sensative.";
    return info;
}

} // namespace quillbay
