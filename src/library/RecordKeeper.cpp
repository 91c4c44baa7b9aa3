#include "library/RecordKeeper.h"

#include "platform/PathText.h"

#include <chrono>
#include <string>
#include <utility>

namespace quillbay {

RecordKeeper::RecordKeeper(FileSystem& files, const InstallPlan& plan)
    : files_(files), plan_(plan), entries_(plan.items.size()) {
    auto mods = plan.otherMods;
    if (plan.Record()) record_ = *plan.Record();
    if (plan.installed) mods.push_back(*plan.installed);
    record_.files.reserve(record_.files.size() + plan.items.size());
    record_.lastNumber = NextInstallNumber(mods);
    if (!plan.Record()) record_.number = plan.installed ? plan.installed->order : record_.lastNumber;
    record_.game = plan.job.gameDirectory;
    record_.finished = 0;
    for (auto& file : record_.files)
        if (file.state == RecordedState::Copied) file.state = RecordedState::Uncertain;
}

void RecordKeeper::ReadAhead() {
    fingerprints_ = files_.FingerprintFiles(
        {plan_.items.size(), [this](std::size_t item) { return plan_.items[item].place.mod.Path(); }});
}

std::error_code RecordKeeper::Add(std::size_t item, bool isSaved, std::int64_t over) {
    const auto& file = plan_.items[item];
    const auto* former = file.place.recorded;
    auto& entry = entries_[item];
    const auto bytes = fingerprints_->Take(item);
    if (!bytes) return bytes.Error();
    const FileVersion version{file.size, file.modified, *bytes, record_.lastNumber, 0};
    if (former) {
        entry.index = static_cast<std::size_t>(former - plan_.Record()->files.data());
    } else {
        entry.index = record_.files.size();
        record_.files.push_back(
            {file.place.position, std::string(file.place.mod.name), RecordedState::Uncertain, 0, 0, {}});
    }
    auto& recorded = FileOf(item);
    recorded.state = RecordedState::Uncertain;
    if (isSaved) recorded.saved = record_.lastNumber;
    if (over != 0) recorded.over = over;
    auto& versions = recorded.versions;
    if (former && versions.back().bytes == version.bytes && versions.back().until == 0) {
        versions.back().modified = version.modified;
    } else {
        versions.push_back(version);
        entry.isNewVersion = true;
    }
    return {};
}

void RecordKeeper::SetCopied(std::size_t item) { FileOf(item).state = RecordedState::Copied; }

void RecordKeeper::Drop(std::size_t item) {
    if (entries_[item].isNewVersion) FileOf(item).versions.pop_back();
}

void RecordKeeper::SetGivenBack(const RecordedFile& file) {
    quillbay::SetGivenBack(record_.files[static_cast<std::size_t>(&file - plan_.Record()->files.data())],
                           record_.lastNumber);
}

RecordedFile& RecordKeeper::FileOf(std::size_t item) { return record_.files[entries_[item].index]; }

std::error_code RecordKeeper::WriteBegun(std::string_view backup) {
    fingerprints_.reset();
    return Write(backup);
}

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
