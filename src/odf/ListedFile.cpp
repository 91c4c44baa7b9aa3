#include "odf/ListedFile.h"

#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

std::vector<ListedFile> ListFiles(const FileSystem& files, const std::vector<std::string>& folders) {
    std::vector<ListedFile> listed;
    for (const std::string& folder : folders) {
        auto entries = files.List(folder, Detail::Names);
        if (!entries) continue;
        for (DirEntry& entry : *entries)
            if (entry.IsPlainFile()) listed.push_back({Join(folder, entry.name), std::move(entry.name)});
    }
    return listed;
}

std::optional<ListedFile> FileBeside(const std::vector<ListedFile>& listed, const ListedFile& file) {
    const auto row = std::ranges::find(listed, file);
    if (listed.size() < 2 || row == listed.end()) return std::nullopt;
    return row + 1 != listed.end() ? row[1] : row[-1];
}

bool IsStillThere(const FileSystem& files, const ListedFile& file) {
    const auto found = files.Stat(file.path);
    return found && found->kind == EntryKind::File && found->name == file.name;
}

std::error_code RemoveListedFile(FileSystem& files, const ListedFile& file) {
    // A look-up would go on to a file of another letter case.
    const auto found = files.Stat(file.path);
    if (found && found->name == file.name) return files.RemoveFile(file.path);
    return found || found.Error() == std::errc::no_such_file_or_directory ? std::error_code{} : found.Error();
}

std::error_code PasteFile(FileSystem& files, const ListedFile& file,
                          const std::vector<std::string>& folders) {
    if (folders.empty() || !IsStillThere(files, file))
        return std::make_error_code(std::errc::no_such_file_or_directory);
    for (const std::string& folder : folders) {
        const auto found = files.Stat(Join(folder, file.name));
        if (found) return std::make_error_code(std::errc::file_exists);
        if (found.Error() != std::errc::no_such_file_or_directory) return found.Error();
    }
    return files.Copy(file.path, Join(folders.front(), file.name), {});
}

} // namespace quillbay
