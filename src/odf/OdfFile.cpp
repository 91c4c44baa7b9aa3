#include "odf/OdfFile.h"

#include "platform/CodePage.h"

#include <utility>

namespace quillbay {

std::optional<std::string> ReadOdf(const FileSystem& files, std::string_view path) {
    auto bytes = files.Read(path, 0, kLargestOdf + 1);
    if (!bytes || bytes->size() > kLargestOdf) return std::nullopt;
    return std::move(*bytes);
}

std::optional<std::string> ReadOdfText(const FileSystem& files, std::string_view path) {
    const auto bytes = ReadOdf(files, path);
    if (!bytes) return std::nullopt;
    return DecodeSystemText(*bytes);
}

std::error_code ReplaceOdf(FileSystem& files, std::string_view path, std::string_view bytes) {
    const auto old = files.Stat(path);
    const bool readOnly = old && old->readOnly && !old->isLink;
    auto error = files.WriteFile(path, bytes);
    if (readOnly && !error) Ignore(files.SetReadOnly(path, false));
    if (!readOnly || error != std::errc::permission_denied || old->links > 1) return error;

    // Windows replaces no read-only file. The attribute of one with a second name is not ours to change.
    error = files.SetReadOnly(path, false);
    if (error) return error;
    error = files.WriteFile(path, bytes);
    if (error) Ignore(files.SetReadOnly(path, true));
    return error;
}

} // namespace quillbay
