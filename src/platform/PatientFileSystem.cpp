#include "platform/PatientFileSystem.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace quillbay {

using std::chrono::milliseconds;

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
    : FileSystemLayer(*base), base_(std::move(base)), pause_(std::move(pause)) {}

Result<FileInfo> PatientFileSystem::StatContents(std::string_view path) const {
    return Reading("StatContents", path, {}, [&] { return Base().StatContents(path); });
}

std::unique_ptr<FingerprintReader> PatientFileSystem::FingerprintFiles(FilesByIndex files) const {
    return std::make_unique<FingerprintsAhead>(*this, std::move(files));
}

std::error_code PatientFileSystem::RemoveTree(std::string_view folder) {
    // What is removed while another program has it open keeps its name, and so its folder, until it is
    // closed.
    return Persist([&] { return Base().RemoveTree(folder); },
                   [](auto error) {
                       return MayPass(error, FileAccess::Writing) || error == std::errc::directory_not_empty;
                   });
}

class PatientFileSystem::Writer : public FileWriter {
public:
    Writer(PatientFileSystem& files, std::unique_ptr<FileWriter> base)
        : files_(files), base_(std::move(base)) {}

    /// The file is new, and nobody else has it open.
    std::error_code Write(std::string_view bytes) override { return base_->Write(bytes); }
    std::error_code Commit() override {
        return files_.Writing("Commit", {}, {}, [&] { return base_->Commit(); });
    }

private:
    PatientFileSystem& files_;
    std::unique_ptr<FileWriter> base_;
};

Result<std::unique_ptr<FileWriter>> PatientFileSystem::MakeFile(std::string_view file, NewFile traits) {
    auto made = FileSystemLayer::MakeFile(file, traits);
    if (!made) return made;
    return std::unique_ptr<FileWriter>(std::make_unique<Writer>(*this, std::move(*made)));
}

std::unique_ptr<FileSystem> MakeFileSystem(Pause pause) {
    if (!pause) pause = [](milliseconds time) { std::this_thread::sleep_for(time); };
    return std::make_unique<PatientFileSystem>(MakePlainFileSystem(), std::move(pause));
}

} // namespace quillbay
