#include "library/NewModFolder.h"

#include "library/FileNames.h"
#include "library/ModRows.h"
#include "platform/PathText.h"

namespace quillbay {

NewFolderOutcome CheckModName(const FileSystem& files, std::string_view modsFolder, std::string_view name) {
    const NameFault fault = FindNameFault(name);
    if (fault == NameFault::Character) return NewFolderOutcome::InvalidCharacter;
    // No row of the list can stand for the others.
    if (fault == NameFault::Changed || IsAddonRow(name) || name == kNoModsRow ||
        name.starts_with(kLeftoverPrefix))
        return NewFolderOutcome::InvalidName;
    if (fault == NameFault::TooLong) return NewFolderOutcome::Failed;
    const auto found = files.Stat(Join(modsFolder, name));
    if (found) return NewFolderOutcome::Exists;
    // What cannot be looked for may be there in another letter case.
    const bool isMissing = found.Error() == std::errc::no_such_file_or_directory;
    return isMissing ? NewFolderOutcome::Made : NewFolderOutcome::Failed;
}

NewFolderOutcome MakeModFolder(FileSystem& files, std::string_view modsFolder, std::string_view name) {
    const auto outcome = CheckModName(files, modsFolder, name);
    if (outcome != NewFolderOutcome::Made) return outcome;
    return files.MakeFolder(Join(modsFolder, name)) ? NewFolderOutcome::Failed : NewFolderOutcome::Made;
}

} // namespace quillbay
