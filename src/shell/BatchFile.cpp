#include "shell/BatchFile.h"

#include "library/GameDirectory.h"
#include "library/WriteRefusal.h"
#include "platform/DosPath.h"
#include "platform/PathText.h"

#include <algorithm>
#include <functional>

namespace quillbay {

namespace {

constexpr std::string_view kGameBatch = "T2QB Launch T2.bat";
constexpr std::string_view kMapEditorBatch = "T2QB Launch Map Editor.bat";

/// What makes the command interpreter split or change a path that is not quoted.
constexpr std::string_view kSpecial = " &()[]{}^=;!'+,`@%";
/// What no Windows path holds; the first of them would end the quotes.
constexpr std::string_view kNotInPaths = "\"<>|*?";

bool EndsLine(char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t'; }

EncodedText Refused(char character) { return {{}, std::string(1, character)}; }

std::string QuotedIfNeeded(std::string_view dosFolder) {
    if (dosFolder.find_first_of(kSpecial) == std::string_view::npos) return std::string(dosFolder);
    std::string quoted = "\"";
    for (const char c : dosFolder) {
        if (c == '%') quoted += '%';
        quoted += c;
    }
    return quoted + '"';
}

/// `rest` stands after the name of the game's program.
EncodedText BatchText(std::string_view dosFolder, std::string_view rest, std::string_view lastLines) {
    const auto notInPath = dosFolder.find_first_of(kNotInPaths);
    if (notInPath != std::string_view::npos) return Refused(dosFolder[notInPath]);
    for (const std::string_view text : {dosFolder, rest}) {
        const auto ending = std::ranges::find_if(text, EndsLine);
        if (ending != text.end()) return Refused(*ending);
    }
    std::string text = "@Echo Off\r\nCD ";
    text.append(QuotedIfNeeded(dosFolder)).append("\r\n").append(kGameExecutable);
    return EncodeSystemText(text.append(rest).append("\r\n").append(lastLines));
}

BatchResult WriteBatch(FileSystem& files, std::string_view gameDirectory, std::string_view prefix,
                       std::string_view name, const std::function<EncodedText(const std::string&)>& textFor) {
    BatchResult result;
    result.name = name;
    result.path = gameDirectory;
    const auto stop = [&](BatchOutcome outcome, std::error_code error = {}) {
        result.outcome = outcome;
        result.error = error;
        return result;
    };
    if (!IsExistingFolder(files, gameDirectory)) return stop(BatchOutcome::GameMissing);
    if (const auto refusal = TryToWrite(files, {result.path}))
        return stop(BatchOutcome::NoRights, refusal.error);
    const auto dosFolder = ShortPath(gameDirectory, prefix);
    if (!dosFolder) return stop(BatchOutcome::NoDosPath, dosFolder.Error());
    const EncodedText text = textFor(*dosFolder);
    if (text.unencodable) {
        result.character = *text.unencodable;
        return stop(BatchOutcome::Unencodable);
    }
    result.path = Join(gameDirectory, name);
    const auto removed = files.RemoveFile(result.path);
    if (removed && removed != std::errc::no_such_file_or_directory)
        return stop(BatchOutcome::NotWritten, removed);
    if (const auto error = files.WriteFile(result.path, text.bytes))
        return stop(BatchOutcome::NotWritten, error);
    return result;
}

} // namespace

EncodedText GameBatchText(std::string_view dosFolder) { return BatchText(dosFolder, {}, "Exit\r\nCls\r\n"); }

EncodedText MapEditorBatchText(std::string_view dosFolder, std::string_view fileName) {
    return BatchText(dosFolder, std::string(" /edit ").append(fileName), "Cls\r\n");
}

BatchResult WriteGameBatch(FileSystem& files, std::string_view gameDirectory, std::string_view prefix) {
    return WriteBatch(files, gameDirectory, prefix, kGameBatch, GameBatchText);
}

BatchResult WriteMapEditorBatch(FileSystem& files, std::string_view gameDirectory, std::string_view fileName,
                                std::string_view prefix) {
    return WriteBatch(
        files, gameDirectory, prefix, kMapEditorBatch,
        [fileName](const std::string& dosFolder) { return MapEditorBatchText(dosFolder, fileName); });
}

} // namespace quillbay
