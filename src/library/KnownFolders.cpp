#include "library/KnownFolders.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

/// Where a known folder hangs: the position of its parent (the root's for a top-level folder) and its name.
struct TreePlace {
    std::size_t parent = kKnownFolderCount;
    std::string_view name;
    bool isParent = false; ///< of another known folder
};

std::array<TreePlace, kKnownFolderCount> MakeTreePlaces() {
    std::array<TreePlace, kKnownFolderCount> places;
    for (std::size_t i = 0; i < kKnownFolderCount; ++i) {
        const std::string_view folder = WithoutFinalSeparators(GameFolders[i]);
        const std::string_view parent = GameFolders[i].substr(0, Parent(folder).size() + 1);
        places[i].name = LastComponent(folder);
        if (parent.size() + places[i].name.size() == folder.size()) {
            places[i].parent = PositionOfFolder(parent);
            places[places[i].parent].isParent = true;
        }
    }
    return places;
}

const TreePlace& PlaceOf(std::size_t position) {
    static const std::array<TreePlace, kKnownFolderCount> places = MakeTreePlaces();
    return places[position];
}

void ListInto(std::vector<ListedFolder>& listed, const FileSystem& files, std::string path, Detail detail,
              ReadFailure* failure, bool isLink = false) {
    if (auto entries = files.List(path, detail))
        listed.push_back({std::move(path), std::move(*entries), isLink});
    else if (failure)
        failure->Note(path, entries.Error());
}

struct ChildFolder {
    std::string path;
    bool isLink;
};

std::vector<ChildFolder> FindChildren(const std::vector<ListedFolder>& parents, std::string_view name) {
    std::vector<ChildFolder> found;
    for (const ListedFolder& parent : parents) {
        std::vector<const DirEntry*> spellings;
        for (const DirEntry& entry : parent.entries) {
            if (entry.kind != EntryKind::Folder || !EqualFolded(entry.name, name)) continue;
            spellings.insert(entry.name == name ? spellings.begin() : spellings.end(), &entry);
        }
        for (const DirEntry* spelling : spellings)
            found.push_back({Join(parent.path, spelling->name), spelling->isLink});
    }
    return found;
}

} // namespace

std::vector<ListedFolder> ListChildren(const FileSystem& files, const std::vector<ListedFolder>& parents,
                                       std::string_view name, Detail detail, ReadFailure* failure) {
    std::vector<ListedFolder> listed;
    for (ChildFolder& child : FindChildren(parents, name))
        ListInto(listed, files, std::move(child.path), detail, failure, child.isLink);
    return listed;
}

KnownFolderWalk::KnownFolderWalk(const FileSystem& files, std::string_view root, Detail rootDetail,
                                 ReadFailure* failure)
    : files_(files), failure_(failure) {
    auto& listed = known_[kKnownFolderCount];
    if (!root.empty()) ListInto(listed, files, std::string(root), rootDetail, failure);
    for (ListedFolder& folder : listed) {
        // A drive root keeps its separator for its own listing only.
        folder.path = WithoutFinalSeparators(folder.path);
    }
}

const std::vector<ListedFolder>& KnownFolderWalk::List(std::size_t position, Detail detail) {
    if (position < kKnownFolderCount) {
        const TreePlace& place = PlaceOf(position);
        known_[position] = ListChildren(files_, known_[place.parent], place.name, detail, failure_);
    }
    return known_[position];
}

std::string FileInFolder::Path() const { return folder ? Join(*folder, name) : std::string(); }

KnownFolders ListKnownFolders(const FileSystem& files, std::string_view root, Detail detail,
                              ReadFailure* failure) {
    KnownFolderWalk walk(files, root, detail, failure);
    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        walk.List(position, detail);
    }
    return walk.TakeKnown();
}

std::size_t ParentOfKnownFolder(std::size_t position) { return PlaceOf(position).parent; }

KnownFolderPaths FindKnownFolders(const FileSystem& files, std::string_view root) {
    KnownFolderPaths paths;
    KnownFolders parents;
    ListInto(parents[kKnownFolderCount], files, std::string(root), Detail::Names, nullptr);
    for (std::size_t position = 0; position < kKnownFolderCount; ++position) {
        const TreePlace& place = PlaceOf(position);
        for (ChildFolder& child : FindChildren(parents[place.parent], place.name))
            paths[position].push_back(std::move(child.path));
        if (!place.isParent) continue;
        for (const std::string& path : paths[position])
            ListInto(parents[position], files, path, Detail::Names, nullptr);
    }
    return paths;
}

std::size_t CountPlainFiles(const std::vector<DirEntry>& entries) {
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [](const DirEntry& e) { return e.IsPlainFile(); }));
}

std::size_t CountPlainFiles(const std::vector<ListedFolder>& folders) {
    std::size_t count = 0;
    for (const ListedFolder& folder : folders)
        count += CountPlainFiles(folder.entries);
    return count;
}

std::size_t CountKnownFiles(const FileSystem& files, std::string_view root,
                            const std::function<bool(std::size_t, std::size_t)>& goOn) {
    KnownFolderWalk walk(files, root, Detail::Names);
    std::size_t total = 0;
    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        total += CountPlainFiles(walk.List(position, Detail::Names));
        if (goOn && !goOn(position, total)) break;
    }
    return total;
}

} // namespace quillbay
