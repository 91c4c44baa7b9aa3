#include "catalogue/FileCatalogue.h"

#include "catalogue/CatalogueTime.h"
#include "catalogue/FileList.h"
#include "common/modMisc.h"
#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "platform/NumberText.h"

namespace quillbay {

FileCatalogue::FileCatalogue(std::string_view bytes) {
    std::size_t position = kGameFolderCount;
    ForEachFileListLine(
        bytes,
        [&](std::size_t heading) {
            position = heading;
            hasHeading_ |= heading != kGameFolderCount;
        },
        [&](const ListedRecord& record) {
            const auto size = ParseNumber<std::uint64_t>(TrimBlanks(record.size));
            const auto modified = ParseCatalogueTime(record.modified);
            if (position == kGameFolderCount || record.name.empty() || !size || !modified) return;
            folders_[position].try_emplace(FoldCase(DecodeSystemText(record.name)), Record{*size, *modified});
        });
}

Result<FileCatalogue> FileCatalogue::LoadFileList(const FileSystem& files,
                                                  std::string_view programDirectory) {
    const auto bytes = ReadFileList(files, programDirectory);
    if (!bytes) return bytes.Error();
    FileCatalogue catalogue(*bytes);
    if (!bytes->empty() && !catalogue.hasHeading_) return std::errc::bad_message;
    return catalogue;
}

const FileCatalogue::Record* FileCatalogue::Find(std::size_t position, std::string_view name) const {
    const auto& folder = folders_[position];
    const auto found = folder.find(FoldFileName(name));
    return found == folder.end() ? nullptr : &found->second;
}

FileChange FileCatalogue::Compare(std::size_t position, const DirEntry& file) const {
    const Record* record = Find(position, file.name);
    if (!record) return FileChange::New;
    const bool isSame = record->size == file.size && record->modified == CatalogueTime(file.modified);
    return isSame ? FileChange::None : FileChange::Modified;
}

} // namespace quillbay
