#include "catalogue/FileListWriter.h"

#include "catalogue/CatalogueTime.h"
#include "catalogue/FileCatalogue.h"
#include "catalogue/FileListText.h"
#include "library/GameDirectory.h"
#include "library/KnownFolders.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

void AppendHeading(std::string& text, std::string_view entry) {
    text += kLineEnd;
    text += kHeadingPrefix;
    text += GetFolderCode(entry) == kGameFolderCount ? kRootHeading : entry;
    text += kLineEnd;
    text += kLineEnd;
}

/// False when the file gets no record.
bool AppendRecord(std::string& text, const DirEntry& file) {
    const std::string name = EncodeFileName(file.name);
    if (name.starts_with(kHeadingPrefix)) return false;
    text += name;
    text += kFieldSeparator;
    text += std::to_string(file.size);
    text += kFieldSeparator;
    text += FormatCatalogueTime(CatalogueTime(file.modified));
    text += kLineEnd;
    return true;
}

} // namespace

RecompileResult RecompileFileList(FileSystem& files, std::string_view gameDirectory,
                                  std::string_view programDirectory) {
    ReadFailure failure;
    KnownFolders known;
    if (IsExistingFolder(files, gameDirectory))
        known = ListKnownFolders(files, gameDirectory, Detail::Full, &failure);
    if (failure) return {RecompileOutcome::Unreadable, failure.path, failure.error, 0};
    if (known[kKnownFolderCount].empty())
        return {RecompileOutcome::NoGame, std::string(gameDirectory), {}, 0};

    std::string text;
    std::size_t recorded = 0;
    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        AppendHeading(text, GameFolders[position]);
        ForEachGameFile(known[position], [&](const DirEntry& file) { recorded += AppendRecord(text, file); });
    }
    std::string list = Join(programDirectory, kFileListName);
    if (const auto error = files.WriteFile(list, text))
        return {RecompileOutcome::NotWritten, std::move(list), error, 0};
    return {RecompileOutcome::Done, {}, {}, recorded};
}

} // namespace quillbay
