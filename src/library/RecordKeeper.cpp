#include "library/RecordKeeper.h"

#include "platform/PathText.h"

#include <chrono>

namespace quillbay {

RecordKeeper::RecordKeeper(FileSystem& files, const InstallPlan& plan)
    : files_(files), plan_(plan), entries_(plan.items.size()) {
    if (plan.Record())
        record_ = *plan.Record();
    else
        record_.number = plan.installed ? plan.installed->order : NextInstallNumber(plan.otherMods);
    record_.game = plan.job.gameDirectory;
    record_.finished = 0;
    for (auto& file : record_.files)
        if (file.state == RecordedState::Copied) file.state = RecordedState::Uncertain;
}

std::error_code RecordKeeper::Add(std::size_t item) {
    const auto& file = plan_.items[item].file;
    const auto* former = plan_.items[item].place.recorded;
    auto& entry = entries_[item];
    FileVersion version{file.size, file.modified, {}};
    const bool isKnown = former && former->versions.back().size == version.size &&
                         former->versions.back().modified == version.modified;
    if (!isKnown) {
        const auto bytes = files_.FingerprintFile(file.path);
        if (!bytes) return bytes.Error();
        version.bytes = *bytes;
    }
    if (former) {
        entry.index = static_cast<std::size_t>(former - plan_.Record()->files.data());
    } else {
        entry.index = record_.files.size();
        record_.files.push_back({file.position, file.name, RecordedState::Uncertain, {}});
    }
    auto& recorded = FileOf(item);
    recorded.state = RecordedState::Uncertain;
    if (isKnown) return {};
    if (former && former->versions.back().bytes == version.bytes) {
        recorded.versions.back() = version;
    } else {
        recorded.versions.push_back(version);
        entry.isNewVersion = true;
    }
    return {};
}

void RecordKeeper::SetCopied(std::size_t item) { FileOf(item).state = RecordedState::Copied; }

void RecordKeeper::Drop(std::size_t item) {
    if (entries_[item].isNewVersion) FileOf(item).versions.pop_back();
}

void RecordKeeper::SetGivenBack(const RecordedFile& file) {
    record_.files[static_cast<std::size_t>(&file - plan_.Record()->files.data())].state =
        RecordedState::GivenBack;
}

RecordedFile& RecordKeeper::FileOf(std::size_t item) { return record_.files[entries_[item].index]; }

std::error_code RecordKeeper::WriteBegun(std::string_view backup) { return Write(backup); }

std::error_code RecordKeeper::WriteFinished(std::string_view backup) {
    std::erase_if(record_.files, [](const RecordedFile& file) { return file.versions.empty(); });
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    record_.finished = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    return Write(backup);
}

std::error_code RecordKeeper::Write(std::string_view backup) const {
    return files_.WriteFile(Join(backup, kRecordName), ToText(record_));
}

} // namespace quillbay
