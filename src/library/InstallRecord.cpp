#include "library/InstallRecord.h"

#include "library/GameFolders.h"
#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "platform/NumberText.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kFirstLine = "Quillbay record 1";
constexpr std::string_view kNumber = "number ";
constexpr std::string_view kGame = "game ";
constexpr std::string_view kFinished = "finished ";
constexpr std::string_view kEnd = "end ";
/// By RecordedState.
constexpr std::string_view kStates = "+?->";
constexpr std::string_view kHexDigits = "0123456789abcdef";
/// Of a record, in bytes: some five million files.
constexpr std::size_t kMostBytes = std::size_t{1} << 29;

/// Control characters, which would end a line or a field, and the sign of the escape itself as %XX.
void AppendEscaped(std::string& text, std::string_view name) {
    for (const char character : name) {
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20 && code != 0x7F && character != '%') {
            text += character;
        } else {
            text += '%';
            text += kHexDigits[code >> 4];
            text += kHexDigits[code & 15];
        }
    }
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string name;
    name.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            name += text[at];
            continue;
        }
        if (at + 2 >= text.size()) return std::nullopt;
        const auto high = kHexDigits.find(text[at + 1]);
        const auto low = kHexDigits.find(text[at + 2]);
        if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
        name += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return name;
}

template <typename Number>
bool ReadNumber(std::string_view text, Number& number) {
    const auto parsed = ParseNumber<Number>(text);
    number = parsed.value_or(number);
    return parsed.has_value();
}

/// Takes what stands before the first `separator`, which is left out; all of it when there is none.
std::string_view Take(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    const auto taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

/// Takes a line that begins with `key`, and gives the rest of it.
std::optional<std::string_view> TakeLine(std::string_view& text, std::string_view key) {
    if (!text.starts_with(key)) return std::nullopt;
    return Take(text, '\n').substr(key.size());
}

std::optional<FileVersion> TakeVersion(std::string_view& fields) {
    FileVersion version;
    std::int64_t seconds = 0;
    if (!ReadNumber(Take(fields, '\t'), version.size) || !ReadNumber(Take(fields, '\t'), seconds))
        return std::nullopt;
    const auto bytes = FingerprintFromHex(Take(fields, '\t'));
    if (!bytes || !ReadNumber(Take(fields, '\t'), version.installed) ||
        !ReadNumber(Take(fields, '\t'), version.until))
        return std::nullopt;
    version.modified = FileTime{std::chrono::seconds{seconds}};
    version.bytes = *bytes;
    return version;
}

/// The position of a known folder, given with its final backslash. Files of one folder follow each other.
std::optional<std::size_t> PositionOf(std::string_view folder, std::size_t likely) {
    if (GameFolders[likely] == folder) return likely;
    const auto found = std::ranges::find(GameFolders, folder);
    if (found == GameFolders.end()) return std::nullopt;
    return static_cast<std::size_t>(found - GameFolders.begin());
}

std::optional<RecordedFile> ParseFile(std::string_view line, std::size_t likelyPosition) {
    RecordedFile file;
    const auto state = line.empty() ? std::string_view::npos : kStates.find(line.front());
    if (state == std::string_view::npos) return std::nullopt;
    file.state = static_cast<RecordedState>(state);
    line.remove_prefix(1);
    const auto path = Take(line, '\t');
    const auto folder = path.substr(0, path.rfind('\\') + 1);
    const auto position = PositionOf(folder, likelyPosition);
    auto name = Unescaped(path.substr(folder.size()));
    // A name that is a path would lead out of the folder.
    if (!position || !name || name->empty() || LastComponent(*name) != *name || *name == "." || *name == "..")
        return std::nullopt;
    file.position = *position;
    file.name = std::move(*name);
    if (!ReadNumber(Take(line, '\t'), file.saved) || !ReadNumber(Take(line, '\t'), file.over))
        return std::nullopt;
    while (!line.empty()) {
        const auto version = TakeVersion(line);
        if (!version) return std::nullopt;
        file.versions.push_back(*version);
    }
    if (file.versions.empty()) return std::nullopt;
    return file;
}

std::error_code SettleLeaving(const FileSystem& files, std::string_view backup, InstallRecord& record) {
    const auto isLeaving = [](const RecordedFile& file) { return file.state == RecordedState::Leaving; };
    if (std::ranges::none_of(record.files, isLeaving)) return {};
    ReadFailure failure;
    const auto folders = ListKnownFolders(files, backup, Detail::Names, &failure);
    if (failure) return failure.error;
    EntryIndex copies(folders);
    std::erase_if(record.files, [&](RecordedFile& file) {
        if (!isLeaving(file)) return false;
        const auto* copy = copies.Find(file.position, file.name);
        file.state = RecordedState::Uncertain;
        return !copy || !IsReplaceable(*copy);
    });
    return {};
}

} // namespace

void SetGivenBack(RecordedFile& file, std::int64_t number) {
    file.state = RecordedState::GivenBack;
    for (auto& version : file.versions)
        if (version.until == 0) version.until = number;
}

void SetBackInGame(RecordedFile& file, std::size_t version) {
    file.state = RecordedState::Uncertain;
    file.versions[version].until = 0;
}

std::string ToText(const InstallRecord& record, const std::vector<bool>& leaving) {
    std::string text(kFirstLine);
    text.reserve(256 + record.files.size() * 160);
    const auto addNumber = [&text](auto number) { text += std::to_string(number); };
    (text += '\n') += kNumber;
    addNumber(record.number);
    text += ' ';
    addNumber(record.lastNumber);
    (text += '\n') += kGame;
    AppendEscaped(text, record.game);
    (text += '\n') += kFinished;
    addNumber(record.finished);
    text += '\n';
    for (std::size_t i = 0; i < record.files.size(); ++i) {
        const auto& file = record.files[i];
        const auto state = i < leaving.size() && leaving[i] ? RecordedState::Leaving : file.state;
        text += kStates[static_cast<std::size_t>(state)];
        text += GameFolders[file.position];
        AppendEscaped(text, file.name);
        text += '\t';
        addNumber(file.saved);
        text += '\t';
        addNumber(file.over);
        for (const auto& version : file.versions) {
            text += '\t';
            addNumber(version.size);
            text += '\t';
            addNumber(version.modified.time_since_epoch().count());
            (text += '\t') += ToHex(version.bytes);
            text += '\t';
            addNumber(version.installed);
            text += '\t';
            addNumber(version.until);
        }
        text += '\n';
    }
    const auto whole = FingerprintOf(text);
    ((text += kEnd) += ToHex(whole)) += '\n';
    return text;
}

std::optional<InstallRecord> ParseInstallRecord(std::string_view text) {
    // The last line proves that all the others are there, and as they were written.
    const auto end = text.rfind(kEnd);
    if (end == std::string_view::npos || end == 0 || text[end - 1] != '\n' || !text.ends_with('\n'))
        return std::nullopt;
    const auto whole =
        FingerprintFromHex(text.substr(end + kEnd.size(), text.size() - end - kEnd.size() - 1));
    text = text.substr(0, end);
    if (!whole || *whole != FingerprintOf(text) || Take(text, '\n') != kFirstLine) return std::nullopt;

    InstallRecord record;
    auto numbers = TakeLine(text, kNumber);
    const auto game = TakeLine(text, kGame);
    const auto finished = TakeLine(text, kFinished);
    if (!numbers || !ReadNumber(Take(*numbers, ' '), record.number) ||
        !ReadNumber(*numbers, record.lastNumber) || !game || !finished ||
        !ReadNumber(*finished, record.finished))
        return std::nullopt;
    auto path = Unescaped(*game);
    if (!path) return std::nullopt;
    record.game = std::move(*path);
    record.files.reserve(static_cast<std::size_t>(std::ranges::count(text, '\n')));
    while (!text.empty()) {
        auto file = ParseFile(Take(text, '\n'), record.files.empty() ? 0 : record.files.back().position);
        if (!file) return std::nullopt;
        record.files.push_back(std::move(*file));
    }
    std::ranges::stable_sort(record.files, {}, &RecordedFile::position);
    return record;
}

Result<std::optional<InstallRecord>> ReadInstallRecord(const FileSystem& files, std::string_view backup) {
    const auto text = files.Read(Join(backup, kRecordName), 0, kMostBytes);
    if (text) {
        auto record = ParseInstallRecord(*text);
        const auto error = record ? SettleLeaving(files, backup, *record) : std::error_code();
        return error ? Result<std::optional<InstallRecord>>(error) : std::move(record);
    }
    // A folder or a device of that name is no record, as little as none at all.
    for (const auto none : {std::errc::no_such_file_or_directory, std::errc::is_a_directory,
                            std::errc::not_a_directory, std::errc::operation_not_supported})
        if (text.Error() == none) return std::optional<InstallRecord>();
    return text.Error();
}

} // namespace quillbay
