#include "library/GivenUpBackup.h"

#include "library/InstallRecord.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

std::string TextOfGivenUp() {
    InstallRecord ended;
    ended.finished = kGivenUp;
    return ToText(ended);
}

std::error_code NoteGivenUp(FileSystem& files, const std::string& backup) {
    return files.WriteFile(Join(backup, kRecordName), TextOfGivenUp());
}

} // namespace

std::error_code EndInstalledState(FileSystem& files, const InstalledMod& mod, std::string& remains) {
    remains = Join(mod.folder, kTempBackup);
    if (!files.Rename(mod.backup, remains)) return {};
    remains = mod.backup;
    return NoteGivenUp(files, mod.backup);
}

std::error_code SweepRemains(FileSystem& files, const std::string& remains) {
    if (LastComponent(remains) == kTempBackup) return files.RemoveTree(remains);
    const auto entries = files.List(remains, Detail::Names);
    if (!entries) return entries.Error();
    std::error_code first;
    for (const auto& entry : *entries) {
        if (entry.name == kRecordName) continue;
        const auto path = Join(remains, entry.name);
        const bool isFolder = entry.kind == EntryKind::Folder && !entry.isLink;
        const auto error = isFolder ? files.RemoveTree(path) : files.RemoveFile(path);
        if (!first) first = error;
    }
    if (first) return first;
    const auto error = files.RemoveTree(remains);
    // Without its record it would count as installed.
    if (error) Ignore(NoteGivenUp(files, remains));
    return error;
}

bool SweepGivenUpBackups(FileSystem& files, std::string_view modLibrary, const std::vector<ModRow>& rows) {
    const auto text = TextOfGivenUp();
    bool isAnyGone = false;
    for (const auto& row : rows) {
        if (!row.isInstalled) continue;
        const auto backup = Join(Join(modLibrary, row.path.text), kBackupName);
        if (files.Read(Join(backup, kRecordName), 0, text.size() + 1).ValueOr({}) == text)
            isAnyGone |= !SweepRemains(files, backup);
    }
    return isAnyGone;
}

} // namespace quillbay
