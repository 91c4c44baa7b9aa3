#include "support/FaultyFileSystem.h"

#include "common/PathText.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

namespace quillbay {

namespace {

constexpr std::size_t kWholeFile = std::size_t(1) << 30;

std::string TempBeside(std::string_view to) { return Join(Parent(to), kTempNew); }

void RemoveHalf(std::string_view folder) {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(test::DiskPath(folder)))
        if (!entry.is_directory()) found.push_back(entry.path());
    for (std::size_t i = 0; i < found.size() / 2; ++i)
        std::filesystem::remove(found[i]);
}

} // namespace

void FaultyFileSystem::Arm(std::size_t number, Fault fault, std::errc error) {
    trace_.clear();
    ended_ = false;
    at_ = number;
    fault_ = fault;
    error_ = std::make_error_code(error);
}

template <typename R, typename Do>
R FaultyFileSystem::Meet(Do&& operation, char kind) const {
    if (ended_) return R(error_);
    trace_.push_back(kind);
    if (trace_.size() != at_) return operation();
    if (fault_ == Fault::Fail) return R(error_);
    ended_ = fault_ != Fault::None;
    if (fault_ == Fault::None || fault_ == Fault::EndAfter) return operation();
    return R(error_);
}

void FaultyFileSystem::LeaveTemp(std::string_view from, std::string_view to, std::string_view bytes) {
    const auto temp = TempBeside(to);
    if (fault_ == Fault::EndTempHalf) {
        std::ofstream(test::DiskPath(temp), std::ios::binary) << bytes.substr(0, bytes.size() / 2);
    } else if (fault_ == Fault::EndTempWhole) {
        std::ofstream(test::DiskPath(temp), std::ios::binary) << bytes;
    } else if (fault_ == Fault::EndSwapped) {
        const auto old = Base().Read(to, 0, kWholeFile);
        if (!old) return;
        if (from.empty())
            Ignore(Base().WriteFile(to, bytes));
        else
            Ignore(Base().Copy(from, to, {.replace = true, .keepLink = true}));
        std::ofstream(test::DiskPath(temp), std::ios::binary) << *old;
    }
}

Result<std::vector<DirEntry>> FaultyFileSystem::List(std::string_view folder, Detail detail) const {
    return Meet<Result<std::vector<DirEntry>>>([&] { return Base().List(folder, detail); });
}

Result<FileInfo> FaultyFileSystem::Stat(std::string_view path) const {
    return Meet<Result<FileInfo>>([&] { return Base().Stat(path); });
}

Result<std::string> FaultyFileSystem::Read(std::string_view file, std::uint64_t offset,
                                           std::size_t maxBytes) const {
    return Meet<Result<std::string>>([&] { return Base().Read(file, offset, maxBytes); });
}

Result<std::string> FaultyFileSystem::ReadLink(std::string_view path) const {
    return Meet<Result<std::string>>([&] { return Base().ReadLink(path); });
}

Result<bool> FaultyFileSystem::SameContents(std::string_view file, std::string_view other) const {
    return Meet<Result<bool>>([&] { return Base().SameContents(file, other); });
}

Result<std::string> FaultyFileSystem::RealPath(std::string_view path) const {
    return Meet<Result<std::string>>([&] { return Base().RealPath(path); });
}

std::error_code FaultyFileSystem::MakeFolder(std::string_view folder) {
    return Meet<std::error_code>([&] { return Base().MakeFolder(folder); });
}

std::error_code FaultyFileSystem::RemoveEmptyFolder(std::string_view folder) {
    return Meet<std::error_code>([&] { return Base().RemoveEmptyFolder(folder); });
}

std::error_code FaultyFileSystem::RemoveFile(std::string_view file) {
    return Meet<std::error_code>([&] { return Base().RemoveFile(file); });
}

std::error_code FaultyFileSystem::RemoveTree(std::string_view folder) {
    if (IsNext() && fault_ == Fault::EndTempHalf) RemoveHalf(folder);
    return Meet<std::error_code>([&] { return Base().RemoveTree(folder); }, 't');
}

std::error_code FaultyFileSystem::Copy(std::string_view from, std::string_view to, CopyOptions options) {
    if (IsNext()) LeaveTemp(from, to, Base().Read(from, 0, kWholeFile).ValueOr({}));
    return Meet<std::error_code>([&] { return Base().Copy(from, to, options); }, 'c');
}

std::error_code FaultyFileSystem::HardLink(std::string_view from, std::string_view to, bool replace) {
    if (!hardLinks_) return std::make_error_code(std::errc::operation_not_supported);
    return Meet<std::error_code>([&] { return Base().HardLink(from, to, replace); });
}

std::error_code FaultyFileSystem::Rename(std::string_view from, std::string_view to) {
    return Meet<std::error_code>([&] { return Base().Rename(from, to); });
}

std::error_code FaultyFileSystem::WriteFile(std::string_view file, std::string_view bytes) {
    if (IsNext()) LeaveTemp({}, file, bytes);
    return Meet<std::error_code>([&] { return Base().WriteFile(file, bytes); }, 'c');
}

std::error_code FaultyFileSystem::SetReadOnly(std::string_view file, bool readOnly) {
    return Meet<std::error_code>([&] { return Base().SetReadOnly(file, readOnly); });
}

std::error_code FaultyFileSystem::SetModified(std::string_view path, FileTime time) {
    return Meet<std::error_code>([&] { return Base().SetModified(path, time); });
}

} // namespace quillbay
