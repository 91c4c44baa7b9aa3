#pragma once

#include "platform/FileSystem.h"
#include "platform/posix/NativePath.h"

#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

/// New entries and renames that lose nothing. All paths are as the system calls take them, in their stored
/// spelling.
namespace quillbay {

/// Gives `from` the name `to`. -1 and errno on failure; EEXIST when `to` exists.
int RenameWithoutReplacing(const char* from, const char* to);

/// Gives the file or link `from` the name `to` by one rename over what is there. -1 and errno on failure;
/// EISDIR when either is a folder. What were two names of one file is one name then.
int RenameFileOver(const char* from, const char* to);

/// Gives the finished `temp` the name `to` in the same folder. With `replace` it takes the place of an
/// existing file or link in one step; a folder is is_a_directory. On failure both are as they were.
std::error_code MoveIntoPlace(const std::string& temp, const std::string& to, bool replace);

/// Gives the file `temp` the name `to` by one rename over what is there; also where both are names of one
/// file already.
std::error_code RenameOver(const std::string& temp, const std::string& to);

/// Removes what an interrupted operation left under a temporary name; a link itself, never a full folder.
std::error_code RemoveLeftover(const std::string& path);

/// The entry kTempNew beside a destination; removed again unless it gets its final name.
class TempEntry {
public:
    explicit TempEntry(std::string destination) : destination_(std::move(destination)) {}
    TempEntry(const TempEntry&) = delete;
    TempEntry& operator=(const TempEntry&) = delete;
    ~TempEntry() {
        if (made_) ::unlink(path_.c_str());
    }

    /// Makes the entry by `create(path)`, which returns -1 and sets errno on failure (EEXIST when the name is
    /// taken). Removes a leftover of that name, or takes the second name, and finds the folder in another
    /// spelling.
    template <typename Create>
    std::error_code Make(Create create) {
        if (IsTempName(std::string_view(destination_).substr(destination_.rfind('/') + 1)))
            return std::make_error_code(std::errc::invalid_argument);
        auto error = TryMake(kTempNew, create);
        if (error == std::errc::no_such_file_or_directory) {
            auto found = FindParentSpelling(destination_);
            if (!found) return error;
            destination_ = std::move(*found);
            error = TryMake(kTempNew, create);
        }
        return isTaken_ ? TryMake(kOtherTempNew, create) : error;
    }

    const std::string& Path() const { return path_; }
    const std::string& Destination() const { return destination_; }

    /// Gives the entry its final name; see MoveIntoPlace.
    std::error_code MoveToDestination(bool replace) {
        const auto error = MoveIntoPlace(path_, destination_, replace);
        if (!error) made_ = false;
        return error;
    }
    /// The same by one rename over what is there, whose place is never empty.
    std::error_code RenameOverDestination() {
        const auto error = RenameOver(path_, destination_);
        if (!error) made_ = false;
        return error;
    }

private:
    template <typename Create>
    std::error_code TryMake(std::string_view name, Create create) {
        path_ = Beside(destination_, name);
        made_ = create(path_.c_str()) != -1;
        if (!made_ && errno == EEXIST) {
            const auto error = RemoveLeftover(path_);
            isTaken_ = bool(error);
            if (error) return error;
            made_ = create(path_.c_str()) != -1;
        }
        return made_ ? std::error_code{} : LastError();
    }

    std::string destination_;
    std::string path_;
    bool made_ = false;
    bool isTaken_ = false; ///< the name, by what cannot be removed
};

} // namespace quillbay
