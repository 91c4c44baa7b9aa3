#pragma once

#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace quillbay {

/// A file as a listing named it.
struct ListedFile {
    std::string path;
    std::string name;

    friend bool operator==(const ListedFile&, const ListedFile&) = default;
};

/// The plain files of the folders, in the order of the file system. Folders that cannot be listed have none.
std::vector<ListedFile> ListFiles(const FileSystem& files, const std::vector<std::string>& folders);

/// The file below this one in the list, else the one above it.
std::optional<ListedFile> FileBeside(const std::vector<ListedFile>& listed, const ListedFile& file);

/// Whether the disk still has the file under exactly this name.
bool IsStillThere(const FileSystem& files, const ListedFile& file);

/// Deletes the file; one that has gone already is no error, and one of another letter case stays.
[[nodiscard]] std::error_code RemoveListedFile(FileSystem& files, const ListedFile& file);

/// Copies the file under its name into the first of `folders`, which count as one. `file_exists` when one of
/// them has that name on the disk in any letter case: nothing is ever overwritten. A failed copy leaves
/// nothing behind.
[[nodiscard]] std::error_code PasteFile(FileSystem& files, const ListedFile& file,
                                        const std::vector<std::string>& folders);

} // namespace quillbay
