#include "library/ModSubfolders.h"

#include "library/FolderMaker.h"
#include "library/OwnTree.h"
#include "platform/PathText.h"

namespace quillbay {

SubfolderResult MakeSubfolders(FileSystem& files, const std::string& modFolder) {
    OwnTree own(files);
    FolderMaker maker(own, modFolder, ListKnownFolders(own, modFolder, Detail::Names));
    SubfolderResult result;
    for (std::size_t position = 0; position < kKnownFolderCount; ++position) {
        const auto made = maker.Ensure(position);
        if (made || result.error || made.Error() == std::errc::cross_device_link) continue;
        result.failed = Join(modFolder, GameFolders[position]);
        result.error = made.Error();
    }
    result.made = maker.Made().size();
    return result;
}

std::size_t RemoveSubfolders(FileSystem& files, const std::string& modFolder) {
    const KnownFolders known = ListKnownFolders(OwnTree(files), modFolder, Detail::Names);
    std::size_t removed = 0;
    for (std::size_t position = kKnownFolderCount; position-- > 0;)
        for (const ListedFolder& folder : known[position])
            if (!files.RemoveEmptyFolder(folder.path)) ++removed;
    return removed;
}

} // namespace quillbay
