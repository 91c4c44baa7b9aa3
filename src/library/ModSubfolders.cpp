#include "library/ModSubfolders.h"

#include "common/PathText.h"
#include "library/FolderMaker.h"
#include "library/OwnTree.h"

namespace quillbay {

SubfolderFailure MakeSubfolders(FileSystem& files, const std::string& modFolder) {
    OwnTree own(files);
    FolderMaker maker(own, modFolder, ListKnownFolders(own, modFolder, Detail::Names));
    SubfolderFailure failure;
    for (std::size_t position = 0; position < kKnownFolderCount; ++position) {
        const auto made = maker.Ensure(position);
        if (made || failure.error || made.Error() == std::errc::cross_device_link) continue;
        failure = {Join(modFolder, GameFolders[position]), made.Error()};
    }
    return failure;
}

void RemoveSubfolders(FileSystem& files, const std::string& modFolder) {
    const KnownFolders known = ListKnownFolders(OwnTree(files), modFolder, Detail::Names);
    for (std::size_t position = kKnownFolderCount; position-- > 0;)
        for (const ListedFolder& folder : known[position])
            Ignore(files.RemoveEmptyFolder(folder.path));
}

} // namespace quillbay
