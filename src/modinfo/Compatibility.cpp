#include "modinfo/Compatibility.h"

#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "platform/PathText.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace quillbay {

ComparedFiles ListComparedFiles(const FileSystem& files, std::string_view base,
                                std::span<const std::string_view> leftOut) {
    ComparedFiles found;
    const KnownFolders known = ListKnownFolders(files, base, Detail::Names, &found.failure);
    if (known[kKnownFolderCount].empty() && !found.failure)
        found.failure = {std::string(base), std::make_error_code(std::errc::no_such_file_or_directory)};

    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        for (const ListedFolder& folder : known[position]) {
            found.folders.push_back(folder.path);
            for (const DirEntry& entry : folder.entries) {
                if (!entry.IsPlainFile() || IsProgramsOwn(entry.name)) continue;
                if (std::ranges::find(leftOut, entry.name) != leftOut.end()) continue;
                found.paths.push_back(std::string(GameFolders[position]) + entry.name);
                found.folderOf.push_back(found.folders.size() - 1);
            }
        }
    }
    found.tooMany = found.paths.size() > kMostComparedFiles;
    if (!found.Usable()) found.paths.clear();
    return found;
}

std::string ComparedFiles::StoredPath(std::size_t path) const {
    return Join(folders[folderOf[path]], LastComponent(paths[path]));
}

std::vector<CommonPath> FindCommonPaths(const std::vector<std::string>& first,
                                        const std::vector<std::string>& second,
                                        const std::function<void(std::size_t, std::size_t)>& progress) {
    std::unordered_map<std::string_view, std::size_t> others;
    others.reserve(second.size());
    for (std::size_t at = 0; at < second.size(); ++at)
        others.try_emplace(second[at], at);
    std::vector<CommonPath> common;
    for (std::size_t at = 0; at < first.size(); ++at) {
        // Taken out, so that two folders whose names differ in letter case do not give one path twice.
        if (const auto other = others.find(first[at]); other != others.end()) {
            common.push_back({at, other->second});
            others.erase(other);
        }
        if (progress) progress(at + 1, first.size());
    }
    return common;
}

ContentComparison::ContentComparison(const FileSystem& files, ComparedFiles first, ComparedFiles second,
                                     std::vector<CommonPath> common)
    : files_(files), first_(std::move(first)), second_(std::move(second)), common_(std::move(common)) {}

bool ContentComparison::Step() {
    if (done_ == common_.size()) return false;
    const auto& [first, second] = common_[done_++];
    const auto isSame = files_.SameContents(first_.StoredPath(first), second_.StoredPath(second));
    if (isSame && *isSame)
        ++equal_;
    else
        (isSame ? different_ : unreadable_).push_back(first_.paths[first]);
    return true;
}

} // namespace quillbay
