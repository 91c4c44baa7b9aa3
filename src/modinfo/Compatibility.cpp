#include "modinfo/Compatibility.h"

#include "library/KnownFolders.h"
#include "library/ModFiles.h"

#include <algorithm>
#include <unordered_set>

namespace quillbay {

ComparedFiles ListComparedFiles(const FileSystem& files, std::string_view base,
                                std::span<const std::string_view> leftOut) {
    ComparedFiles found;
    const KnownFolders known = ListKnownFolders(files, base, Detail::Names, &found.failure);
    if (known[kKnownFolderCount].empty() && !found.failure)
        found.failure = {std::string(base), std::make_error_code(std::errc::no_such_file_or_directory)};

    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        for (const ListedFolder& folder : known[position]) {
            for (const DirEntry& entry : folder.entries) {
                if (!entry.IsPlainFile() || IsProgramsOwn(entry.name)) continue;
                if (std::ranges::find(leftOut, entry.name) != leftOut.end()) continue;
                found.paths.push_back(std::string(GameFolders[position]) + entry.name);
            }
        }
    }
    found.tooMany = found.paths.size() > kMostComparedFiles;
    if (!found.Usable()) found.paths.clear();
    return found;
}

std::vector<std::string> CommonPaths(const std::vector<std::string>& first,
                                     const std::vector<std::string>& second,
                                     const std::function<void(std::size_t, std::size_t)>& progress) {
    std::unordered_set<std::string_view> others(second.begin(), second.end());
    std::vector<std::string> common;
    std::size_t done = 0;
    for (const std::string& path : first) {
        // Taken out, so that two folders whose names differ in letter case do not give one path twice.
        if (others.erase(path) > 0) common.push_back(path);
        if (progress) progress(++done, first.size());
    }
    return common;
}

} // namespace quillbay
