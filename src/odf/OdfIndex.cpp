#include "odf/OdfIndex.h"

#include "library/KnownFolders.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

bool IsOdf(const DirEntry& entry) { return entry.IsPlainFile() && EndsFolded(entry.name, kOdfEnding); }

std::vector<std::string> ListFolderOdfs(const std::vector<ListedFolder>& spellings) {
    std::vector<std::string> paths;
    for (const ListedFolder& folder : spellings)
        for (const DirEntry& entry : folder.entries)
            if (IsOdf(entry)) paths.push_back(Join(folder.path, entry.name));
    return paths;
}

std::string Reversed(std::string text) {
    std::ranges::reverse(text);
    return text;
}

} // namespace

OdfFolders ListOdfFolders(const FileSystem& files, std::string_view odfFolder, ReadFailure* failure) {
    OdfFolders folders;
    auto entries = files.List(odfFolder, Detail::Names);
    if (!entries) {
        if (failure) failure->Note(odfFolder, entries.Error());
        return folders;
    }
    const std::vector<ListedFolder> root{{std::string(odfFolder), std::move(*entries)}};
    std::array<std::vector<ListedFolder>, kOdfFolders.size()> listed;
    for (std::size_t row = 0; row < kOdfFolders.size(); ++row) {
        const auto parentRow = static_cast<std::size_t>(
            std::ranges::find(kOdfFolders, Parent(kOdfFolders[row])) - kOdfFolders.begin());
        listed[row] = ListChildren(files, parentRow < row ? listed[parentRow] : root,
                                   LastComponent(kOdfFolders[row]), Detail::Names, failure);
        folders.odfs[row] = ListFolderOdfs(listed[row]);
        folders.totalFiles += CountPlainFiles(listed[row]);
    }
    return folders;
}

OdfIndex::OdfIndex(const OdfFolders& folders) {
    for (const auto& paths : folders.odfs) {
        for (std::string path : paths) {
            std::ranges::replace(path, '/', '\\');
            reversedPaths_.push_back(Reversed(FoldCase(path)));
        }
    }
    std::ranges::sort(reversedPaths_);
}

bool OdfIndex::OdfExists(std::string_view name) const {
    if (name.empty()) return true;
    const std::string end = Reversed(FoldCase(name));
    const auto found = std::ranges::lower_bound(reversedPaths_, end);
    return found != reversedPaths_.end() && found->starts_with(end);
}

} // namespace quillbay
