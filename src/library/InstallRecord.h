#pragma once

#include "library/PositionIndex.h"
#include "platform/FileSystem.h"
#include "platform/Fingerprint.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What an installation writes down in `Backup`, so that whatever happens to the mod, to the game and to the
/// times of folders afterwards, it stays known which files of the game are the mod's.
namespace quillbay {

/// In a `Backup` folder.
inline constexpr std::string_view kRecordName = "~quillbay.record";

/// Instead of the time at which an installation came to its end: everything was given back, and only the
/// folder could not be moved away. What is in it is nobody's data.
inline constexpr std::int64_t kGivenUp = -1;

/// The bytes that a mod has installed under one name.
struct FileVersion {
    std::uint64_t size = 0; ///< bytes
    FileTime modified{};    ///< of the mod's file, and of the game's after it was copied
    Fingerprint bytes;
    std::int64_t installed = 0; ///< by which installation first: its number
    /// The number of the last installation that can have met it in the game; 0 while it may be there.
    std::int64_t until = 0;

    friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

enum class RecordedState {
    Copied,    ///< the last installation has copied the present version into the game
    Uncertain, ///< it may not have
    GivenBack, ///< what is in the game is not the mod's: the file has left the mod, or another mod's job
               ///< replaced it
    Leaving,   ///< its saved copy is being moved into the game: where `Backup` has none any more, it is there
};

/// A file that a mod has put into the game.
struct RecordedFile {
    std::size_t position = 0; ///< in GameFolders, from 0
    std::string name;         ///< in the mod's spelling when it was first installed
    RecordedState state = RecordedState::Uncertain;
    /// The number of the installation that saved what the game had there; 0 when none has. The copy can be a
    /// version of another mod only when that was installed before.
    std::int64_t saved = 0;
    /// The place in the order of the mod whose file this mod has replaced without saving it, since that was
    /// installed later or is missing in the game; 0 when there is none. What that mod has saved is what comes
    /// back when both are gone.
    std::int64_t over = 0;
    std::vector<FileVersion>
        versions; ///< every one that was ever installed, the present one last; never empty

    friend bool operator==(const RecordedFile&, const RecordedFile&) = default;
};

struct InstallRecord {
    /// The number of the mod's first installation, which is its place in the order, and of its last one. A
    /// new number is greater than all that the records of the library hold.
    std::int64_t number = 0;
    std::int64_t lastNumber = 0;
    std::string game; ///< real path of the game directory
    /// When the last installation came to its end, in nanoseconds since 1970; 0 when it did not; or kGivenUp.
    /// A file that it has copied and that has not changed since needs no reading.
    std::int64_t finished = 0;
    std::vector<RecordedFile> files; ///< by position

    friend bool operator==(const InstallRecord&, const InstallRecord&) = default;
};

/// No version of the file is in the game any more; `number` is the greatest of any installation so far.
void SetGivenBack(RecordedFile& file, std::int64_t number);
/// The version of that index is in the game again.
void SetBackInGame(RecordedFile& file, std::size_t version);

/// UTF-8, lines that end with LF: a head, a line for each file, and a fingerprint of all of them. The files
/// of the indexes in `leaving` that are true are written as Leaving.
std::string ToText(const InstallRecord& record, const std::vector<bool>& leaving = {});

/// Nothing when `text` is no whole record of this version of the format.
std::optional<InstallRecord> ParseInstallRecord(std::string_view text);

/// The record of a `Backup` folder; none when there is none that can be understood. An error when it is there
/// and the system does not let it be read. Where an uninstallation was interrupted, `Backup` tells how far it
/// came: a file whose saved copy has left it is none of the mod's any more, so that none is Leaving.
Result<std::optional<InstallRecord>> ReadInstallRecord(const FileSystem& files, std::string_view backup);

using RecordIndex = PositionIndex<RecordedFile>;

} // namespace quillbay
