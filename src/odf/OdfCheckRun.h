#pragma once

#include "odf/OdfChecks.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quillbay {

struct OdfCheckOptions {
    OdfCheckSet checks;
    bool removeUnusedLines = false; ///< from each file before it is checked
};

/// Why a run stopped at a file.
struct OdfError : FailedOdfCheck {
    std::string path;
    std::string bytes; ///< of the file, as it was checked
};

/// Where an error was left.
struct OdfPlace {
    std::string path;
    std::size_t line; ///< from 0
};

/// One check of an `odf` folder, file by file, folder after folder. It may rest after any file and keeps its
/// place by path: a file that was rewritten meanwhile may stand elsewhere in the listing, yet none is passed
/// over and none is checked twice.
class OdfCheckRun {
public:
    enum class Step {
        FileDone, ///< also a file that could not be read or rewritten: that is passed over
        Error,    ///< see Error()
        End,
    };

    /// Lists the folders and builds the race list.
    OdfCheckRun(FileSystem& files, std::string odfFolder);

    /// Checks the next file. After an error one of the two following comes first.
    Step Next(const OdfCheckOptions& options);
    /// Lists everything anew and goes on with the file of the last step again.
    void CheckAgain();
    /// Lists everything anew and goes on behind the file of the last step.
    void SkipFile();

    const std::optional<OdfError>& Error() const { return error_; }
    const std::string& OdfFolder() const { return odfFolder_; }
    /// Of all files in the folders, whatever their ending: how far the run is, from 0 to TotalFiles. It lags
    /// one file behind, and one more for each error that was repaired.
    std::size_t ShownFiles() const;
    std::size_t TotalFiles() const { return folders_.totalFiles; }
    /// Files that could be read and are done with, of all ODF files of the last listing.
    std::size_t Checked() const { return checked_; }
    std::size_t Odfs() const { return odfs_; }
    /// How many files had an error, were changed since by whomever, and passed.
    std::size_t Repaired() const { return repaired_; }
    /// Errors that were passed over: by SkipFile, or because their check was switched off.
    const std::vector<OdfPlace>& Ignored() const { return ignored_; }
    /// How many files unused lines were removed from.
    std::size_t Rewritten() const { return rewritten_; }
    /// Paths of files that could not be read or rewritten, and of folders that could not be listed.
    const std::vector<std::string>& PassedOver() const { return passedOver_; }

private:
    void Prepare();
    void FinishFile(const std::string& bytes);
    bool EnterFolderWithFiles();
    std::optional<FailedOdfCheck> CheckFile(std::string& bytes, const OdfCheckOptions& options);

    FileSystem& files_;
    std::string odfFolder_;
    OdfFolders folders_;
    OdfSurroundings around_;
    std::vector<std::string> waiting_; ///< paths of the current folder
    std::size_t next_ = 0;             ///< into `waiting_`
    std::size_t folderIndex_ = 0;
    std::string current_;                         ///< path of the last step
    std::set<std::string, std::less<>> finished_; ///< paths of the current folder
    long long filesChecked_ = 0;
    std::size_t odfs_ = 0;
    std::size_t checked_ = 0;
    bool currentCounts_ = false; ///< in `checked_`
    std::size_t repaired_ = 0;
    std::vector<OdfPlace> ignored_;
    std::size_t rewritten_ = 0;
    std::vector<std::string> passedOver_;
    std::optional<OdfError> error_;
    std::optional<OdfError> checkedAgain_; ///< why the file that comes next was stopped at
};

} // namespace quillbay
