#include "library/WriteRefusal.h"

namespace quillbay {

bool IsAboutRights(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

WriteRefusal TryToWrite(FileSystem& files, const std::vector<std::string>& folders) {
    WriteRefusal first;
    for (const auto& folder : folders) {
        const auto error = files.TryToWrite(folder);
        if (!IsAboutRights(error)) return {};
        if (!first) first = {folder, error};
    }
    return first;
}

} // namespace quillbay
