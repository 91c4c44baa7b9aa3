#include "platform/posix/FolderTree.h"

#include "platform/PathText.h"
#include "platform/posix/FolderDescent.h"
#include "platform/posix/FolderReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillbay {

namespace {

/// Both jobs visit a tree without recursion: of each folder on the way down these are still to be entered.
using PendingFolders = std::vector<std::vector<std::string>>;

class TreeRemover {
public:
    std::error_code Remove(const std::string& folder) {
        if (const auto error = way_.Start(folder, true)) return error;
        EmptyCurrent();
        while (!pending_.empty()) {
            if (!pending_.back().empty()) {
                EnterNext();
            } else if (!LeaveCurrent()) {
                return first_;
            }
        }
        if (::rmdir(folder.c_str()) != 0) Note(LastError());
        return first_;
    }

private:
    void Note(const std::error_code& error) {
        if (!first_) first_ = error;
    }

    /// Removes the files of the folder just entered and notes its folders.
    void EmptyCurrent() {
        std::vector<std::string> files;
        pending_.emplace_back();
        // Read to the end before the first removal: a listing that changes meanwhile may miss names.
        FolderReader reader(way_.Duplicate());
        while (const dirent* entry = reader.Next()) {
            (entry->d_type == DT_DIR ? pending_.back() : files).emplace_back(entry->d_name);
        }
        if (reader.Error()) Note(reader.Error());
        for (auto& file : files) {
            if (RemoveEntry(file, 0)) continue;
            if (errno == EISDIR) {
                pending_.back().push_back(std::move(file));
            } else if (errno != ENOENT) {
                Note(LastError());
            }
        }
    }

    void EnterNext() {
        const std::string& name = pending_.back().back();
        const auto error = way_.Enter(name);
        if (!error) {
            names_.push_back(name);
            EmptyCurrent();
            return;
        }
        // An empty folder needs no entering; a mount refuses to be removed.
        const bool gone = RemoveEntry(name, AT_REMOVEDIR) || errno == ENOENT;
        if (!gone) Note(error);
        pending_.back().pop_back();
    }

    /// False when there is no way back.
    bool LeaveCurrent() {
        pending_.pop_back();
        if (pending_.empty()) return true;
        if (const auto error = way_.Leave()) {
            Note(error);
            return false;
        }
        if (!RemoveEntry(names_.back(), AT_REMOVEDIR) && errno != ENOENT) Note(LastError());
        names_.pop_back();
        pending_.back().pop_back();
        return true;
    }

    /// unlinkat in the current folder, whose permissions are widened when they forbid it. errno on failure.
    bool RemoveEntry(const std::string& name, int flags) {
        if (::unlinkat(way_.Fd(), name.c_str(), flags) == 0) return true;
        if (errno != EACCES) return false;
        if (::fchmod(way_.Fd(), S_IRWXU) == 0 && ::unlinkat(way_.Fd(), name.c_str(), flags) == 0) return true;
        errno = EACCES;
        return false;
    }

    FolderDescent way_;
    PendingFolders pending_;
    std::vector<std::string> names_; ///< of the folders entered, without the first
    std::error_code first_;
};

/// Adds the sizes of the files in the current folder and notes its folders.
std::error_code MeasureCurrent(const FolderDescent& way, PendingFolders& pending, std::uint64_t& bytes) {
    pending.emplace_back();
    FolderReader reader(way.Duplicate());
    while (const dirent* entry = reader.Next()) {
        if (entry->d_type == DT_DIR) {
            pending.back().emplace_back(entry->d_name);
            continue;
        }
        if (entry->d_type != DT_REG && entry->d_type != DT_UNKNOWN) continue;
        struct stat info {};
        if (::fstatat(way.Fd(), entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno == ENOENT) continue;
            return LastError();
        }
        if (S_ISDIR(info.st_mode)) pending.back().emplace_back(entry->d_name);
        if (S_ISREG(info.st_mode)) bytes += static_cast<std::uint64_t>(info.st_size);
    }
    return reader.Error();
}

} // namespace

std::error_code RemoveFolderTree(const std::string& folder) {
    // By these names a folder can be emptied, but not removed itself.
    const auto name = LastComponent(folder);
    if (name.empty() || name == "." || name == "..") return std::make_error_code(std::errc::invalid_argument);
    return TreeRemover().Remove(folder);
}

Result<std::uint64_t> FolderTreeSize(const std::string& folder) {
    FolderDescent way;
    PendingFolders pending;
    std::uint64_t bytes = 0;
    // With the slash a link is followed here, and only here.
    if (const auto error = way.Start(folder + '/', false)) return error;
    if (const auto error = MeasureCurrent(way, pending, bytes)) return error;
    while (true) {
        if (!pending.back().empty()) {
            const std::string name = std::move(pending.back().back());
            pending.back().pop_back();
            const auto error = way.Enter(name);
            if (error && error != std::errc::no_such_file_or_directory &&
                error != std::errc::not_a_directory) {
                return error;
            }
            if (error) continue;
            if (const auto measureError = MeasureCurrent(way, pending, bytes)) return measureError;
            continue;
        }
        pending.pop_back();
        if (pending.empty()) return bytes;
        if (const auto error = way.Leave()) return error;
    }
}

} // namespace quillbay
