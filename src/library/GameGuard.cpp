#include "library/GameGuard.h"

#include "platform/LocalTime.h"
#include "platform/PathText.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace quillbay {

namespace {

/// Sorts by time as text, and is a folder's name on every system.
std::string DateAndTime() {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    const auto local = ToLocalTime(now);
    const auto day = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(local - day);
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d.%02d.%02d", int(date.year()),
                      unsigned(date.month()), unsigned(date.day()), int(time.hours().count()),
                      int(time.minutes().count()), int(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace

GameGuard::GameGuard(FileSystem& files, const JobPlan& plan)
    : files_(files), plan_(plan), owners_(files, plan.otherMods), secondPlace_(files),
      keptBefore_(plan.lastChangedFolders) {}

Result<bool> GameGuard::IsModsOwn(LookedAtFile& file, const GamePlace& place) {
    if (file.IsLink()) return false;
    if (place.recorded) {
        if (place.recorded->state == RecordedState::GivenBack) return false;
        const auto holds = file.Holds(*place.recorded, plan_.Record()->finished);
        if (!holds || !*holds) return holds;
        return !place.mod || !file.IsSameFileAs(place.mod.Path());
    }
    // Without a record the mod's present files are what it has installed.
    if (plan_.Record() || !place.mod) return false;
    const auto same = file.Equals(place.mod.Path(), false);
    if (!same || !*same) return same;
    return !file.IsSameFileAs(place.mod.Path());
}

RecordedFile& GameGuard::ToChange(const InstalledMod& mod, const RecordedFile& recorded) {
    const auto index = static_cast<std::size_t>(&recorded - mod.record->files.data());
    return records_.try_emplace(&mod, *mod.record).first->second.files[index];
}

std::int64_t GameGuard::LastNumber() const {
    std::int64_t last = plan_.Record() ? plan_.Record()->lastNumber : 0;
    for (const auto& mod : plan_.otherMods)
        last = std::max(last, mod.record ? mod.record->lastNumber : mod.order);
    return last;
}

std::error_code GameGuard::WriteRecord(const InstalledMod& mod) {
    return files_.WriteFile(Join(mod.backup, kRecordName), ToText(records_.at(&mod)));
}

void GameGuard::WriteRecords(ReadFailure& failure) {
    for (const auto& [mod, record] : records_)
        if (!failure) failure.Note(Join(mod->backup, kRecordName), WriteRecord(*mod));
}

void GameGuard::SetSavedBy(const InstalledMod& mod, const RecordedFile& recorded, std::int64_t number) {
    ToChange(mod, recorded).saved = number;
}

void GameGuard::Bequeath(const std::vector<GamePlace>& places, ReadFailure& failure) {
    for (const auto& heir : plan_.otherMods) {
        if (!plan_.installed || !heir.record) continue;
        const auto isHeir = [&](const RecordedFile& file) { return file.over == plan_.installed->order; };
        if (std::ranges::none_of(heir.record->files, isHeir)) continue;
        PositionIndex<GamePlace> index(places);
        FolderMaker folders(files_, heir.backup,
                            ListKnownFolders(files_, heir.backup, Detail::Names, &failure));
        for (const auto& file : heir.record->files) {
            const auto* place = isHeir(file) ? index.Find(file.position, file.name) : nullptr;
            if (place && !failure) failure.Note(heir.backup, Inherit(heir, file, *place, folders));
        }
    }
    WriteRecords(failure);
}

std::error_code GameGuard::Inherit(const InstalledMod& heir, const RecordedFile& recorded,
                                   const GamePlace& place, FolderMaker& folders) {
    LookedAtFile saved(files_, place.saved.Path(), place.savedIsLink);
    const auto isHeirs = !place.saved ? Result<bool>(false)
                                      : saved.HoldsSaved(recorded, SavedBy(*plan_.installed, place.recorded));
    if (!isHeirs) return isHeirs.Error();
    if (*isHeirs) {
        // The heir's file was there first: what it has saved itself is what was there before.
        ToChange(heir, recorded).over = 0;
        return {};
    }
    if (place.saved) {
        const auto folder = folders.Ensure(place.position);
        if (!folder) return folder.Error();
        const auto error = files_.Copy(place.saved.Path(), Join(*folder, place.saved.name),
                                       {.keepLink = true, .flush = true});
        // It has a copy of its own from another time, or from an attempt that was interrupted.
        if (error && error != std::errc::file_exists) return error;
    }
    auto& changed = ToChange(heir, recorded);
    changed.over = place.recorded ? place.recorded->over : 0;
    changed.saved = place.recorded && place.saved ? place.recorded->saved : changed.saved;
    return {};
}

void GameGuard::TellOwners(const std::vector<const GamePlace*>& places, ReadFailure& failure) {
    for (const auto* place : places) {
        if (!place->game || place->gameIsLink) continue;
        LookedAtFile file(files_, place->game.Path(), false);
        for (const auto& [mod, recorded] :
             owners_.FindUnsavedOwners(file, place->position, place->name, failure)) {
            // What this mod has saved from that one will be that one's again.
            LookedAtFile saved(files_, place->saved.Path(), place->savedIsLink);
            const auto comesBack =
                !place->saved ? Result<bool>(false)
                              : saved.HoldsSaved(*recorded, SavedBy(*plan_.installed, place->recorded));
            failure.Note(place->saved.Path(), comesBack.Error());
            if (failure) return;
            if (!*comesBack) SetGivenBack(ToChange(*mod, *recorded), LastNumber());
        }
    }
    WriteRecords(failure);
}

void GameGuard::SettleClaims(const std::vector<const GamePlace*>& places, ReadFailure& failure) {
    for (const auto* place : places) {
        if (!place->saved || place->savedIsLink) continue;
        LookedAtFile saved(files_, place->saved.Path(), false);
        for (const auto& [mod, recorded] :
             owners_.FindUnsavedClaims(saved, place->position, place->name, failure)) {
            const auto theirs = saved.FindSaved(*recorded, SavedBy(*plan_.installed, place->recorded));
            failure.Note(place->saved.Path(), theirs.Error());
            if (failure) return;
            const bool wasGivenBack = recorded->state == RecordedState::GivenBack;
            if (*theirs && wasGivenBack)
                SetBackInGame(ToChange(*mod, *recorded),
                              static_cast<std::size_t>(*theirs - recorded->versions.data()));
            else if (!*theirs && !wasGivenBack)
                SetGivenBack(ToChange(*mod, *recorded), LastNumber());
        }
    }
    WriteRecords(failure);
}

std::error_code GameGuard::Secure(LookedAtFile& file, const GamePlace& place) {
    const auto owner = owners_.FindOwner(file, place.position, place.name);
    if (owner && *owner) {
        ++replaced_[std::string((*owner)->Name())];
        return {};
    }
    if (place.saved) {
        const auto saved = file.Equals(place.saved.Path(), place.savedIsLink);
        if (saved && *saved) return {};
    }
    if (owners_.IsSaved(file, place.position, place.name)) return {};
    return Keep(file, place);
}

std::optional<std::string> GameGuard::KeptBefore(LookedAtFile& file, const GamePlace& place) {
    const auto* entry = keptBefore_.Find(place.position, place.name);
    if (!entry) return std::nullopt;
    auto path = keptBefore_.PathOf(place.position, *entry);
    if (!file.IsSameFileAs(path)) return std::nullopt;
    return path;
}

std::error_code GameGuard::Keep(LookedAtFile& file, const GamePlace& place) {
    // By a command that was interrupted just then.
    if (auto before = KeptBefore(file, place)) {
        kept_.emplace(file.Path(), std::move(*before));
        return {};
    }
    if (const auto error = MakeChangedFolder()) return error;
    const auto folder = folders_->Ensure(place.position);
    if (!folder) return folder.Error();
    auto path = Join(*folder, LastComponent(file.Path()));
    if (const auto error = secondPlace_.Give(file.Path(), path, false)) return error;
    kept_.emplace(file.Path(), std::move(path));
    return {};
}

std::error_code GameGuard::MakeChangedFolder() {
    if (folders_ || noFolder_) return noFolder_;
    const auto changed = Join(plan_.modFolder, kChangedName);
    if ((noFolder_ = files_.MakeFolder(changed))) return noFolder_;
    // What is kept there must not lie in the game.
    const auto info = files_.Stat(changed);
    if (!info || info->isLink)
        return noFolder_ =
                   info ? std::make_error_code(std::errc::too_many_symbolic_link_levels) : info.Error();
    const auto wanted = Join(changed, DateAndTime());
    auto path = wanted;
    for (int number = 2; files_.Stat(path); ++number)
        path = wanted + " " + std::to_string(number);
    if ((noFolder_ = files_.MakeFolder(path))) return noFolder_;
    folders_.emplace(files_, path);
    return {};
}

void GameGuard::StaysInGame(const LookedAtFile& file) {
    const auto kept = kept_.find(file.Path());
    if (kept == kept_.end()) return;
    if (const auto error = files_.RemoveFile(kept->second))
        Ignore(error);
    else
        kept_.erase(kept);
}

} // namespace quillbay
