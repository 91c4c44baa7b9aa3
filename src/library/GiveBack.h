#pragma once

#include "library/FolderMaker.h"
#include "library/GameGuard.h"
#include "library/ModJob.h"
#include "library/SecondPlace.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillbay {

/// A mod that was installed, or installed again, after the one at work and may have saved its files.
struct LaterMod {
    const InstalledMod* mod; ///< among the plan's
    KnownFolders backupFolders;
};

/// What giving back has done; paths name the files concerned.
struct GiveBackResult {
    std::size_t deleted = 0;                ///< mod files removed from the game
    std::size_t restored = 0;               ///< saved copies that are back in the game
    std::vector<std::string> notOurs;       ///< game files left alone: they are not the mod's
    std::vector<FailedFile> notDeleted;     ///< game files that could not be deleted or told from the mod's
    std::vector<FailedFile> notRestored;    ///< saved copies that could not be put back
    std::vector<std::string> notHandedOver; ///< saved copies of later mods that could not be corrected
};

/// Finds the places of files that come position by position: in the listed game, in the listed `Backup`, in
/// the record.
class PlaceFinder {
public:
    /// `plan` must outlive it and what it finds.
    explicit PlaceFinder(const JobPlan& plan);
    /// `name` is the mod's.
    GamePlace Find(std::size_t position, const std::string& name);

private:
    EntryIndex game_;
    EntryIndex saved_;
    std::optional<RecordIndex> record_;
};

/// The places of the plan's record, which it must have, that are not among `present`.
std::vector<GamePlace> FindOtherRecorded(const JobPlan& plan,
                                         const std::unordered_set<const RecordedFile*>& present);

/// The mods installed, also again, after the plan's own, with their backups listed; leftovers in these are
/// noted in the plan.
std::vector<LaterMod> ListLaterMods(const FileSystem& files, JobPlan& plan);

/// A saved copy that stays must not change with the game's file.
void EndSharing(FileSystem& files, const std::string& copy);

/// Gives the game what it had before a mod put its files there: saved copies, or nothing.
class GiveBack {
public:
    /// What may become of a saved copy that is put back.
    enum class SavedCopy {
        Stays,
        MayBeShared, ///< it goes when all is done: the game gets a second name of it without copying
        MayLeave,    ///< the record says that it is Leaving
    };
    enum class Restored { No, Yes, ByMoving };

    GiveBack(FileSystem& files, const JobPlan& plan, FolderMaker& gameFolders, GameGuard& guard,
             GiveBackResult& result);

    /// For a place without a saved copy: takes the mod's own file away. False when it may still be there.
    bool Delete(const GamePlace& place);
    /// For a place with a saved copy: puts that back.
    Restored Restore(const GamePlace& place, SavedCopy copy);
    /// Mods installed later have saved this mod's file where they replaced it. They get what the game gets
    /// now, so that uninstalling them does not bring this mod back. `places` are those that have what they
    /// had. Gives those for which it failed: one of these mods may still bring this mod's file back.
    std::unordered_set<const GamePlace*> HandOver(const std::vector<LaterMod>& laterMods,
                                                  const std::vector<const GamePlace*>& places);
    /// True when the saved copy of a place cannot be told from what the mod has installed there.
    bool MayBeModsOwn(const GamePlace& place) const;

private:
    Result<Restored> PutBack(const GamePlace& place, SavedCopy copy);
    Result<Restored> PutBackUnlessThere(const GamePlace& place, SavedCopy copy);
    bool IsBackAlready(LookedAtFile& file, const GamePlace& place, SavedCopy copy);
    Result<bool> IsInstalledHere(const GamePlace& place, const std::string& copy, std::int64_t savedBy) const;

    FileSystem& files_;
    const JobPlan& plan_;
    FolderMaker& gameFolders_;
    GameGuard& guard_;
    SecondPlace secondPlace_;
    bool canMove_ = true; ///< false once a folder of the game was found on another disk than `Backup`
    GiveBackResult& result_;
};

} // namespace quillbay
