#pragma once

#include "library/InstallRecord.h"
#include "library/ModInstaller.h"
#include "platform/FileSystem.h"

#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillbay {

/// Writes the record of one installation: before the first file of the game changes, and when all are in
/// place.
class RecordKeeper {
public:
    /// `plan` must outlive it.
    RecordKeeper(FileSystem& files, const InstallPlan& plan);

    /// Begins to read what the plan's items are going to put into the game. Comes before Add.
    void ReadAhead();
    /// Notes what the plan's item of that index is going to put into the game. `isSaved` tells that what it
    /// replaces has just been saved, `over` is the place in the order of a mod whose file it replaces
    /// unsaved, or 0. On failure the item must not be installed.
    [[nodiscard]] std::error_code Add(std::size_t item, bool isSaved, std::int64_t over);
    /// The item, which was added, is in the game now.
    void SetCopied(std::size_t item);
    /// The item, which was added, is not in the game, and nothing was saved for it: an uninstallation must
    /// not take what the game has there for the mod's.
    void Drop(std::size_t item);
    /// A file of the plan's record, which the mod lacks now.
    void SetGivenBack(const RecordedFile& file);

    [[nodiscard]] std::error_code WriteBegun(std::string_view backup);
    [[nodiscard]] std::error_code WriteFinished(std::string_view backup);

private:
    /// Where an item stands in the record.
    struct Entry {
        std::size_t index = 0;
        bool isNewVersion = false;
    };

    RecordedFile& FileOf(std::size_t item);

    std::error_code Write(std::string_view backup) const;

    FileSystem& files_;
    const InstallPlan& plan_;
    InstallRecord record_; ///< the former files in their places, new ones behind them
    std::vector<Entry> entries_;
    std::unique_ptr<FingerprintReader> fingerprints_;
};

} // namespace quillbay
