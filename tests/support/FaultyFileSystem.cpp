#include "support/FaultyFileSystem.h"

#include "platform/PathText.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace quillbay {

namespace {

constexpr std::size_t kWholeFile = std::size_t(1) << 30;

void RemoveHalf(std::string_view folder) {
    std::vector<std::filesystem::path> found;
    std::error_code missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(test::DiskPath(folder), missing))
        if (!entry.is_directory()) found.push_back(entry.path());
    for (std::size_t i = 0; i < found.size() / 2; ++i)
        std::filesystem::remove(found[i]);
}

} // namespace

template <typename Replace>
void FaultyFileSystem::LeaveTemp(Text to, Text bytes, Replace replace) {
    const auto temp = Join(Parent(to), kTempNew);
    if (fault_ == Fault::EndTempHalf) test::PutFile(temp, bytes.substr(0, bytes.size() / 2));
    if (fault_ == Fault::EndTempWhole) test::PutFile(temp, bytes);
    if (fault_ != Fault::EndSwapped) return;
    const auto old = Base().Read(to, 0, kWholeFile);
    if (!old) return;
    Ignore(replace());
    test::PutFile(temp, *old);
}

std::error_code FaultyFileSystem::RemoveTree(Text folder) {
    if (IsNext() && fault_ == Fault::EndTempHalf) RemoveHalf(folder);
    return FileSystemLayer::RemoveTree(folder);
}

std::error_code FaultyFileSystem::Copy(Text from, Text to, CopyOptions options) {
    if (IsNext())
        LeaveTemp(to, Base().Read(from, 0, kWholeFile).ValueOr({}),
                  [&] { return Base().Copy(from, to, {.replace = true, .keepLink = true}); });
    return Writing(options.flush ? "FlushedCopy" : "Copy", from, to,
                   [&] { return Base().Copy(from, to, options); });
}

std::error_code FaultyFileSystem::WriteFile(Text file, Text bytes) {
    if (IsNext()) LeaveTemp(file, bytes, [&] { return Base().WriteFile(file, bytes); });
    return FileSystemLayer::WriteFile(file, bytes);
}

/// When the process ends before the file has its name, what was written so far stays under the temporary one.
class FaultyFileSystem::Writer : public FileWriter {
public:
    Writer(FaultyFileSystem& files, std::string temp, std::unique_ptr<FileWriter> base)
        : files_(files), temp_(std::move(temp)), base_(std::move(base)) {}
    ~Writer() override {
        base_.reset();
        if (files_.ended_ && !committed_) test::PutFile(temp_, written_);
    }

    std::error_code Write(Text bytes) override {
        return files_.Writing("Write", temp_, bytes, [&] {
            written_ += bytes;
            return base_->Write(bytes);
        });
    }
    std::error_code Commit() override {
        return files_.Writing("Commit", temp_, {}, [&] {
            committed_ = true;
            return base_->Commit();
        });
    }

private:
    FaultyFileSystem& files_;
    std::string temp_;
    std::unique_ptr<FileWriter> base_;
    std::string written_;
    bool committed_ = false;
};

Result<std::unique_ptr<FileWriter>> FaultyFileSystem::MakeFile(Text file, NewFile traits) {
    auto made = FileSystemLayer::MakeFile(file, traits);
    if (!made) return made;
    return std::unique_ptr<FileWriter>(
        std::make_unique<Writer>(*this, Join(Parent(file), kTempNew), std::move(*made)));
}

std::size_t SweepStride() {
#ifdef _WIN32
    constexpr std::size_t kUsual = 17; // the emulator makes file work some fifty times slower
#else
    constexpr std::size_t kUsual = 1;
#endif
    const char* stride = std::getenv("QUILLBAY_SWEEP_STRIDE");
    return stride ? std::stoul(stride) : kUsual;
}

void SweepFaults(const std::string& trace, std::initializer_list<FaultyFileSystem::Fault> faults,
                 const std::function<void(std::size_t, FaultyFileSystem::Fault)>& run, std::size_t dense) {
    using enum FaultyFileSystem::Fault;
    std::size_t met = 0;
    for (std::size_t number = 1; number <= trace.size(); number += number < dense ? 1 : 25) {
        const char kind = trace[number - 1];
        for (const auto fault : faults) {
            if (fault == EndTempHalf && kind == '.') continue;
            if ((fault == EndTempWhole || fault == EndSwapped) && kind != 'c') continue;
            if (++met % SweepStride() != 0) continue;
            SCOPED_TRACE(testing::Message()
                         << "operation " << number << " of " << trace << ", fault " << int(fault));
            run(number, fault);
            if (testing::Test::HasFailure()) return;
        }
    }
}

} // namespace quillbay
