#include "modinfo/ModInfoWriter.h"

#include "library/FindEntry.h"
#include "library/ModFiles.h"
#include "platform/PathText.h"

#include <utility>

namespace quillbay {

std::optional<std::string> FindModInfo(const FileSystem& files, std::string_view modFolder) {
    const auto entries = files.List(modFolder, Detail::Names);
    const DirEntry* found = entries ? FindEntry(*entries, kModInfoName, EntryKind::File) : nullptr;
    if (!found) return std::nullopt;
    return Join(modFolder, found->name);
}

ModInfoResult WriteModInfo(FileSystem& files, std::string_view modFolder, const ModInfoCaptions& values) {
    const auto failed = [](std::error_code error) {
        return ModInfoResult{ModInfoOutcome::Failed, {}, {}, error};
    };
    const EncodedText text = EncodeModInfo(values);
    if (text.unencodable) return {ModInfoOutcome::Unencodable, *text.unencodable, {}, {}};
    ModInfoParser parser;
    parser.Feed(text.bytes);
    if (auto fields = CutFields(parser.Finish()); !fields.empty())
        return {ModInfoOutcome::TooLong, {}, std::move(fields), {}};

    const auto entries = files.List(modFolder, Detail::Names);
    if (!entries) return failed(entries.Error());
    const DirEntry* old = FindEntry(*entries, kModInfoName, EntryKind::File);
    const std::string path = Join(modFolder, old ? old->name : kModInfoName);
    if (old) {
        const auto oldValues = ReadModInfo(files, path);
        if (!oldValues) return failed(std::make_error_code(std::errc::io_error));
        if (auto fields = CutFields(*oldValues); !fields.empty())
            return {ModInfoOutcome::OldTooLong, {}, std::move(fields), {}};
    }
    if (const auto error = files.WriteFile(path, text.bytes)) return failed(error);
    return {};
}

} // namespace quillbay
