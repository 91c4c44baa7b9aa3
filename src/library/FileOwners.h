#pragma once

#include "library/InstalledMods.h"
#include "library/ModFiles.h"
#include "platform/FileSystem.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Whose bytes a file of the game holds.
namespace quillbay {

/// A file of the game (or of a `Backup`) that is compared with what is known: by size and times first, by its
/// bytes only where these do not tell, and never read twice.
class LookedAtFile {
public:
    LookedAtFile(const FileSystem& files, std::string path, bool isLink)
        : files_(files), path_(std::move(path)), isLink_(isLink) {}

    const std::string& Path() const { return path_; }
    bool IsLink() const { return isLink_; }

    /// True when it holds a version that was installed. A file that was copied by the installation that ended
    /// at `finished` (as in InstallRecord), and has its size and time and has not changed since, is not read.
    /// A link holds none.
    Result<bool> Holds(const RecordedFile& recorded, std::int64_t finished);
    /// The same by the bytes alone.
    Result<bool> ReadsAsAnyOf(const RecordedFile& recorded);
    /// The same of a saved copy, which the installation of that number has made: the version must have
    /// been in the game then.
    Result<bool> HoldsSaved(const RecordedFile& recorded, std::int64_t savedBy);
    /// That version; null when there is none.
    Result<const FileVersion*> FindSaved(const RecordedFile& recorded, std::int64_t savedBy);
    /// True when size and time say that it is one of the versions; for what is only shown.
    bool Resembles(const RecordedFile& recorded);
    /// True when it has the same bytes, or, as a link, the same text.
    Result<bool> Equals(const std::string& other, bool otherIsLink);
    /// True when it is a file with two names (hard links), and `other` leads to it.
    bool IsSameFileAs(const std::string& other);
    const Result<FileInfo>& Info();

private:
    const FileSystem& files_;
    std::string path_;
    bool isLink_;
    /// The first of the versions that count and have the bytes of the file; null when none has.
    Result<const FileVersion*> Find(const std::vector<FileVersion>& versions,
                                    const std::function<bool(const FileVersion&)>& counts);

    std::optional<Result<FileInfo>> info_;
    std::optional<Result<Fingerprint>> bytes_;
};

/// The number of the installation that made the saved copy of a file; `recorded`, in the record of `mod`, may
/// be null.
std::int64_t SavedBy(const InstalledMod& mod, const RecordedFile* recorded);

/// The installed mods beside the one at work: what they have installed and saved. Folders are listed when
/// they are first asked for. Names are asked for position by position.
class FileOwners {
public:
    FileOwners(const FileSystem& files, const std::vector<InstalledMod>& mods);
    ~FileOwners();

    /// One of the mods, of an order greater than `after`, that has installed there what the file holds; null
    /// when none has. An error when that cannot be told.
    Result<const InstalledMod*> FindOwner(LookedAtFile& file, std::size_t position, std::string_view name,
                                          std::int64_t after = -1);
    /// The same by size and time alone.
    const InstalledMod* GuessOwner(LookedAtFile& file, std::size_t position, std::string_view name);
    /// The last installed of the mods that have saved something there; null when none has. What cannot be
    /// read is noted in `failure`.
    const InstalledMod* FindSaver(std::size_t position, std::string_view name, ReadFailure& failure);
    /// True when one of the mods has saved there what the file holds.
    bool IsSaved(LookedAtFile& file, std::size_t position, std::string_view name);

    /// The mods that have installed there what the file holds, have saved nothing there, and whose file no
    /// mod that was installed later has saved; with what they recorded. What cannot be read is noted in
    /// `failure`.
    std::vector<std::pair<const InstalledMod*, const RecordedFile*>>
    FindUnsavedOwners(LookedAtFile& file, std::size_t position, std::string_view name, ReadFailure& failure);

    /// The mods that have installed there, at whatever time, the same bytes as this saved copy, and have
    /// saved nothing there, be their file given back or not; as above.
    std::vector<std::pair<const InstalledMod*, const RecordedFile*>>
    FindUnsavedClaims(LookedAtFile& copy, std::size_t position, std::string_view name, ReadFailure& failure);

private:
    struct Listing;
    struct Mod;
    const DirEntry* FindSaved(Mod& mod, std::size_t position, std::string_view name, ReadFailure& failure);
    bool IsSavedAfter(const Mod& owner, const RecordedFile& recorded, std::string_view name,
                      ReadFailure& failure);
    EntryIndex& IndexOf(Listing& listing, const std::string& root);

    const FileSystem& files_;
    std::vector<std::unique_ptr<Mod>> mods_; ///< indexes refer to what lies beside them
};

} // namespace quillbay
