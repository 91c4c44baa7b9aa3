#include "platform/PatientFileSystem.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

namespace quillbay {

namespace {

using std::chrono::milliseconds;

/// Together about a second.
constexpr std::array<milliseconds, 7> kPauses = {milliseconds(10), milliseconds(20),  milliseconds(40),
                                                 milliseconds(80), milliseconds(160), milliseconds(320),
                                                 milliseconds(400)};

std::error_code ErrorOf(const std::error_code& error) { return error; }
template <typename T>
std::error_code ErrorOf(const Result<T>& result) {
    return result.Error();
}

bool IsPassingReading(const std::error_code& error) { return MayPass(error, FileAccess::Reading); }
bool IsPassingWriting(const std::error_code& error) { return MayPass(error, FileAccess::Writing); }
/// What is removed while another program has it open keeps its name, and so its folder, until it is closed.
bool IsPassingRemoval(const std::error_code& error) {
    return IsPassingWriting(error) || error == std::errc::directory_not_empty;
}

} // namespace

bool Patience::Take(milliseconds time) {
    const auto now = std::chrono::steady_clock::now();
    const std::lock_guard lock(mutex_);
    if (now - since_ > std::chrono::minutes(1)) {
        since_ = now;
        taken_ = milliseconds(0);
    }
    if (taken_ + time > kMostInVain) return false;
    taken_ += time;
    return true;
}

void Patience::GiveBack(milliseconds time) {
    const std::lock_guard lock(mutex_);
    taken_ -= std::min(taken_, time);
}

PatientFileSystem::PatientFileSystem(std::unique_ptr<FileSystem> base, Pause pause)
    : FileSystemWrapper(*base), base_(std::move(base)), pause_(std::move(pause)) {}

template <typename Operation, typename IsPassing>
auto PatientFileSystem::Persist(Operation operation, IsPassing isPassing) const -> decltype(operation()) {
    auto result = operation();
    milliseconds waited(0);
    for (const auto pause : kPauses) {
        if (!isPassing(ErrorOf(result)) || !patience_.Take(pause)) break;
        pause_(pause);
        waited += pause;
        result = operation();
    }
    if (waited.count() > 0 && !isPassing(ErrorOf(result))) patience_.GiveBack(waited);
    return result;
}

template <typename Operation, typename... Arguments>
auto PatientFileSystem::Reading(Operation operation, const Arguments&... arguments) const
    -> decltype((Base().*operation)(arguments...)) {
    return Persist([&] { return (Base().*operation)(arguments...); }, IsPassingReading);
}

template <typename Operation, typename... Arguments>
auto PatientFileSystem::Writing(Operation operation, const Arguments&... arguments)
    -> decltype((Base().*operation)(arguments...)) {
    return Persist([&] { return (Base().*operation)(arguments...); }, IsPassingWriting);
}

Result<std::vector<DirEntry>> PatientFileSystem::List(std::string_view folder, Detail detail) const {
    return Reading(&FileSystem::List, folder, detail);
}

Result<FileInfo> PatientFileSystem::Stat(std::string_view path) const {
    return Reading(&FileSystem::Stat, path);
}

Result<FileInfo> PatientFileSystem::StatContents(std::string_view path) const {
    return Reading(&FileSystem::StatContents, path);
}

Result<std::string> PatientFileSystem::Read(std::string_view file, std::uint64_t offset,
                                            std::size_t maxBytes) const {
    return Reading(&FileSystem::Read, file, offset, maxBytes);
}

Result<std::string> PatientFileSystem::ReadLink(std::string_view path) const {
    return Reading(&FileSystem::ReadLink, path);
}

Result<bool> PatientFileSystem::SameContents(std::string_view file, std::string_view other) const {
    return Reading(&FileSystem::SameContents, file, other);
}

Result<Fingerprint> PatientFileSystem::FingerprintFile(std::string_view file) const {
    return Reading(&FileSystem::FingerprintFile, file);
}

std::unique_ptr<FingerprintReader> PatientFileSystem::FingerprintFiles(FilesByIndex files) const {
    return std::make_unique<FingerprintsAhead>(*this, std::move(files));
}

Result<std::uint64_t> PatientFileSystem::TreeSize(std::string_view folder) const {
    return Reading(&FileSystem::TreeSize, folder);
}

Result<std::string> PatientFileSystem::RealPath(std::string_view path) const {
    return Reading(&FileSystem::RealPath, path);
}

Result<DiskSpace> PatientFileSystem::SpaceAt(std::string_view folder) const {
    return Reading(&FileSystem::SpaceAt, folder);
}

std::error_code PatientFileSystem::MakeFolder(std::string_view folder) {
    return Writing(&FileSystem::MakeFolder, folder);
}

std::error_code PatientFileSystem::RemoveEmptyFolder(std::string_view folder) {
    return Writing(&FileSystem::RemoveEmptyFolder, folder);
}

std::error_code PatientFileSystem::RemoveFile(std::string_view file) {
    return Writing(&FileSystem::RemoveFile, file);
}

std::error_code PatientFileSystem::RemoveTree(std::string_view folder) {
    return Persist([&] { return Base().RemoveTree(folder); }, IsPassingRemoval);
}

std::error_code PatientFileSystem::Copy(std::string_view from, std::string_view to, CopyOptions options) {
    return Writing(&FileSystem::Copy, from, to, options);
}

std::error_code PatientFileSystem::HardLink(std::string_view from, std::string_view to, bool replace) {
    return Writing(&FileSystem::HardLink, from, to, replace);
}

std::error_code PatientFileSystem::Rename(std::string_view from, std::string_view to) {
    return Writing(&FileSystem::Rename, from, to);
}

std::error_code PatientFileSystem::RenameOver(std::string_view from, std::string_view to) {
    return Writing(&FileSystem::RenameOver, from, to);
}

std::error_code PatientFileSystem::WriteFile(std::string_view file, std::string_view bytes) {
    return Writing(&FileSystem::WriteFile, file, bytes);
}

class PatientFileSystem::Writer : public FileWriter {
public:
    Writer(const PatientFileSystem& files, std::unique_ptr<FileWriter> base)
        : files_(files), base_(std::move(base)) {}

    /// The file is new, and nobody else has it open.
    std::error_code Write(std::string_view bytes) override { return base_->Write(bytes); }
    std::error_code Commit() override {
        return files_.Persist([&] { return base_->Commit(); }, IsPassingWriting);
    }

private:
    const PatientFileSystem& files_;
    std::unique_ptr<FileWriter> base_;
};

Result<std::unique_ptr<FileWriter>> PatientFileSystem::MakeFile(std::string_view file, NewFile traits) {
    auto made = Writing(&FileSystem::MakeFile, file, traits);
    if (!made) return made;
    return std::unique_ptr<FileWriter>(std::make_unique<Writer>(*this, std::move(*made)));
}

std::error_code PatientFileSystem::SetReadOnly(std::string_view file, bool readOnly) {
    return Writing(&FileSystem::SetReadOnly, file, readOnly);
}

std::error_code PatientFileSystem::SetModified(std::string_view path, FileTime time) {
    return Writing(&FileSystem::SetModified, path, time);
}

std::unique_ptr<FileSystem> MakeFileSystem(Pause pause) {
    if (!pause) pause = [](milliseconds time) { std::this_thread::sleep_for(time); };
    return std::make_unique<PatientFileSystem>(MakePlainFileSystem(), std::move(pause));
}

} // namespace quillbay
