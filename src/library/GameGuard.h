#pragma once

#include "library/FileOwners.h"
#include "library/FolderMaker.h"
#include "library/ModJob.h"
#include "library/SecondPlace.h"
#include "platform/FileSystem.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillbay {

/// A file in the game's place of a mod's file, and what the mod's `Backup` has for it.
struct GamePlace {
    std::size_t position = 0; ///< in GameFolders, from 0
    std::string name;  ///< in the game: the spelling of what is saved, else of what is there, else of the mod
    FileInFolder game; ///< the game's file or link
    FileInFolder saved;                     ///< the saved copy
    FileInFolder mod;                       ///< the mod's present file
    const RecordedFile* recorded = nullptr; ///< in the mod's record
    bool gameIsLink = false;
    bool gameIsBlocked = false; ///< a folder or device has the name
    bool savedIsLink = false;
};

/// Stands before every file of the game that is going to be overwritten or deleted: its bytes must be in a
/// named place. They are when a mod has installed them or a `Backup` holds them; else they are first kept in
/// the mod's folder, in `Changed\<date time>\<folder>\<name>`. One object serves one command.
class GameGuard {
public:
    /// `plan` must outlive it.
    GameGuard(FileSystem& files, const JobPlan& plan);

    /// True when the mod at work has put there what the file holds. Another name of the mod's own file is not
    /// its installed copy.
    Result<bool> IsModsOwn(LookedAtFile& file, const GamePlace& place);
    /// To be called before the mod at work gives up what it has saved for these places. A mod installed
    /// earlier that has replaced its file without saving it inherits the saved copy. On failure, at
    /// `failure.path`, nothing may be given up.
    void Bequeath(const std::vector<GamePlace>& places, ReadFailure& failure);
    /// To be called before the game's files of these places are replaced by saved copies or by the mod's own
    /// files. Mods that have installed them and have saved nothing there would take what comes there later
    /// for their own: their records say from now on that it is not. On failure, of the record at
    /// `failure.path`, nothing may be replaced.
    void TellOwners(const std::vector<const GamePlace*>& places, ReadFailure& failure);
    /// To be called before the saved copies of these places come back. A mod that has installed the same
    /// bytes there at another time would take what comes back for its own, and delete it with its files: its
    /// record says from now on that it is not. A mod whose own version comes back has it in the game again,
    /// whatever its record said. On failure as above.
    void SettleClaims(const std::vector<const GamePlace*>& places, ReadFailure& failure);
    /// The saved copy that the mod has of this file is from now on the one that the installation of that
    /// number has made; to be written down by WriteRecord, which on failure may not.
    void SetSavedBy(const InstalledMod& mod, const RecordedFile& recorded, std::int64_t number);
    [[nodiscard]] std::error_code WriteRecord(const InstalledMod& mod);
    /// Makes sure of the bytes of a file that is not the mod's own. On failure the file must be left alone.
    [[nodiscard]] std::error_code Secure(LookedAtFile& file, const GamePlace& place);
    /// Takes back what Secure has kept, since the file stayed in the game after all.
    void StaysInGame(const LookedAtFile& file);

    FileOwners& Owners() { return owners_; }
    /// The game's files that were kept, and where.
    const std::map<std::string, std::string>& Kept() const { return kept_; }
    /// How many files of other installed mods were allowed to be replaced, by the mods' names.
    const std::map<std::string, std::size_t>& ReplacedOfOthers() const { return replaced_; }

private:
    std::error_code Keep(LookedAtFile& file, const GamePlace& place);
    std::error_code MakeChangedFolder();
    /// Of one place; the heir's record is changed, but not written.
    std::error_code Inherit(const InstalledMod& heir, const RecordedFile& recorded, const GamePlace& place,
                            FolderMaker& folders);
    RecordedFile& ToChange(const InstalledMod& mod, const RecordedFile& recorded);
    std::int64_t LastNumber() const; ///< of any installation so far
    void WriteRecords(ReadFailure& failure);
    std::optional<std::string> KeptBefore(LookedAtFile& file, const GamePlace& place);

    FileSystem& files_;
    const JobPlan& plan_;
    FileOwners owners_;
    SecondPlace secondPlace_;
    std::map<const InstalledMod*, InstallRecord> records_; ///< of other mods, as they have been changed
    EntryIndex keptBefore_;
    std::optional<FolderMaker> folders_;
    std::error_code noFolder_;
    std::map<std::string, std::string> kept_;
    std::map<std::string, std::size_t> replaced_;
};

} // namespace quillbay
