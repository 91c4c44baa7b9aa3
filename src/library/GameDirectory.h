#pragma once

#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <string>
#include <string_view>

namespace quillbay {

inline constexpr std::string_view kGameNotFound = "(Tempest II directory not found)";
inline constexpr std::string_view kGameExecutable = "Tempest2.exe";

/// The folder that the game's registry entry names.
RegisteredFolder ReadGameDirectory(const Registry& registry);

/// True when the text names an existing folder (the marker and the empty text do not).
bool IsExistingFolder(const FileSystem& files, std::string_view path);

enum class CandidateState {
    Accepted,
    NoName,   ///< no last component (no backslash, or a drive root): the chooser beeps
    Rejected, ///< no such folder in this exact spelling, or it is the current one
};

struct Candidate {
    CandidateState state;
    std::string path; ///< without the one final separator that was typed
};

/// Checks a game directory that the user typed or chose. The letter case of the last component must be that
/// of the disk, on every system.
Candidate CheckCandidate(const FileSystem& files, std::string_view typed, std::string_view current);

/// The explanation shown by the chooser.
std::string ChooserInfo(std::string_view programDirectory);

} // namespace quillbay
