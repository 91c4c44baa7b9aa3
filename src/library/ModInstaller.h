#pragma once

#include "library/GiveBack.h"
#include "library/ModJob.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <system_error>
#include <vector>

namespace quillbay {

/// One file of the mod and where it goes. Its place has a game file that will be replaced, or none, or is
/// blocked by a folder or device: then the file cannot be installed.
struct InstallItem {
    GamePlace place;
    // Of the mod's file, where it was listed:
    bool isReadOnly;    ///< and no link
    std::uint64_t size; ///< bytes
    FileTime modified;

    bool Replaces() const { return bool(place.game) && !place.gameIsBlocked; }
};

/// What an installation would do.
struct InstallPlan : JobPlan {
    std::vector<InstallItem> items;
    // Only where the mod is installed already:
    std::vector<GamePlace> dropped; ///< of files of a former version that the mod lacks now
    std::vector<LaterMod> laterMods;
};

enum class InstallOutcome {
    Done,
    Refused,       ///< by the plan's refusal: nothing was done
    NoRights,      ///< not one of the game's folders concerned can be written: nothing was done
    Unreadable,    ///< a folder that has to be known cannot be read: nothing was done
    NoBackup,      ///< `Backup` could not be made: nothing was installed
    UnsafeFile,    ///< a game file could be neither saved nor told from the mod's own: nothing was installed
    NothingCopied, ///< not one file could be installed
};

/// Of a job's files that only somebody curious looks at, so many are named.
inline constexpr std::size_t kNamedFiles = 15;

struct InstallResult {
    InstallOutcome outcome = InstallOutcome::Done;
    Refusal refusal = Refusal::None;
    std::string concerned; ///< the path behind an outcome other than Done
    std::error_code error; ///< and the reason

    std::size_t installed = 0;               ///< files of the mod that are in the game now
    std::vector<std::string> firstInstalled; ///< the first kNamedFiles: the entry of GameFolders and the name
    std::size_t saved = 0;
    std::vector<FailedFile> notSaved;  ///< game files left alone because they could not be saved or kept
    std::vector<FailedFile> notCopied; ///< mod files that did not get into the game
    std::map<std::string, std::string> kept; ///< game files that nobody else had, and where they were kept
    std::map<std::string, std::size_t> replaced; ///< files of other mods that were replaced, by mod
    GiveBackResult givenBack;                    ///< files of a former version that the mod lacks now
};

InstallPlan PlanInstall(const FileSystem& files, const ModJob& job);

/// Copies the mod's files over the game, after every game file that they replace is safe in `Backup`.
/// `progress` hears of Saving and Copying.
InstallResult RunInstall(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress);

} // namespace quillbay
