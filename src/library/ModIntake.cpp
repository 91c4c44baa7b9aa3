#include "library/ModIntake.h"

#include "library/FolderSource.h"
#include "library/InstalledMods.h"
#include "library/ModExchange.h"
#include "library/ModHousekeeping.h"
#include "library/ModJob.h"
#include "library/ModRows.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr std::string_view kUnpacked = "in"; ///< in the staging folder

bool Overlaps(const FileSystem& files, const std::string& folder, const std::string& modLibrary) {
    const auto real = files.RealPath(folder);
    const auto mods = files.RealPath(modLibrary);
    return real && mods && (IsSameOrInside(*real, *mods) || IsSameOrInside(*mods, *real));
}

bool IsAnyInstalled(const FileSystem& files, const std::string& modFolder) {
    if (IsInstalled(files, modFolder)) return true;
    const std::string addons = Join(modFolder, kAddonName);
    const auto entries = files.List(addons, Detail::Names).ValueOr({});
    return std::ranges::any_of(
        entries, [&](const DirEntry& addon) { return IsInstalled(files, Join(addons, addon.name)); });
}

} // namespace

ModIntake::ModIntake(FileSystem& files, ArchiveOpener openArchive, std::string modLibrary,
                     std::string gameDirectory)
    : files_(files), openArchive_(openArchive), modLibrary_(std::move(modLibrary)),
      gameDirectory_(std::move(gameDirectory)) {}

ModIntake::~ModIntake() {
    if (!staging_.empty()) Ignore(RecoverMods(files_, staging_, modLibrary_));
}

IntakeFailure ModIntake::Unpack(const std::string& path, const IntakeLimits& limits,
                                const IntakeProgress& progress) {
    const auto info = files_.Stat(path);
    if (!info) return {IntakeProblem::Unreadable, info.Error(), path};
    const bool isFolder = info->kind == EntryKind::Folder;
    if (isFolder && Overlaps(files_, path, modLibrary_)) return {IntakeProblem::InsideLibrary, {}, {}};
    const auto source = isFolder ? OpenFolder(files_, path) : openArchive_(files_, path);
    if (!source) return {IntakeProblem::Unreadable, source.Error(), {}};
    if (auto failure = MakeStaging()) return failure;

    const std::string folder = Join(staging_, kUnpacked);
    UnpackResult unpacked = quillbay::Unpack(files_, **source, folder, limits, progress);
    if (unpacked.failure) return std::move(unpacked.failure);
    const std::string name(LastComponent(WithoutFinalSeparators(path)));
    layout_ = PlanMods(unpacked.tree, isFolder ? name : ModNameFromArchive(name));
    layout_.leftOut.insert(layout_.leftOut.begin(), unpacked.leftOut.begin(), unpacked.leftOut.end());
    for (const NewMod& mod : layout_.mods)
        waiting_.push_back({Join(folder, mod.root)});
    return layout_.mods.empty() ? IntakeFailure{IntakeProblem::Empty, {}, {}} : IntakeFailure{};
}

/// Makes the staging folder, which must be empty: what an earlier run has left there must not get into a mod.
IntakeFailure ModIntake::MakeStaging() {
    IntakeFailure failure;
    for (const std::string& place : StagingPlaces(files_, modLibrary_)) {
        auto error = RecoverMods(files_, place, modLibrary_);
        if (!error) error = files_.MakeFolder(place);
        if (!error) {
            staging_ = place;
            error = files_.MakeFolder(Join(place, kUnpacked));
        }
        if (!error) return {};
        failure = {IntakeProblem::Unwritable, error, place};
    }
    return failure;
}

ModPlace ModIntake::FindPlace(std::string_view name) const {
    switch (CheckModName(files_, modLibrary_, name)) {
    case NewFolderOutcome::Made:
        return ModPlace::Free;
    case NewFolderOutcome::InvalidName:
        return ModPlace::InvalidName;
    case NewFolderOutcome::InvalidCharacter:
    case NewFolderOutcome::Failed:
        return ModPlace::InvalidCharacter;
    case NewFolderOutcome::Exists:
        break;
    }
    const std::string place = Join(modLibrary_, name);
    const auto info = files_.Stat(place);
    const bool isOwnFolder = info && info->kind == EntryKind::Folder && !info->isLink && !info->isMount;
    if (!isOwnFolder || CheckGameDirectory(files_, gameDirectory_, place) == GameDirectoryState::InsideMods)
        return ModPlace::Taken;
    return ModPlace::Replaceable;
}

std::error_code ModIntake::MovePapers(const NewMod& mod, Waiting& waiting) {
    for (; waiting.papers < mod.moves.size(); ++waiting.papers) {
        const LayoutMove& move = mod.moves[waiting.papers];
        const std::string to = Join(waiting.place, move.to);
        if (const auto error = files_.MakeFolder(Parent(to))) return error;
        if (const auto error = files_.Rename(Join(Join(staging_, kUnpacked), move.from), to)) return error;
    }
    return {};
}

std::error_code ModIntake::ReplaceBy(std::string& place, PlacedMod& placed) {
    const std::string old = Join(modLibrary_, placed.name);
    const auto info = files_.Stat(old);
    if (!info) return info.Error();
    placed.name = info->name;
    placed.wasInstalled = IsAnyInstalled(files_, old);
    std::string waiting = WaitingPlace(staging_, placed.name);
    if (const auto error = files_.MakeFolder(Parent(waiting))) return error;
    if (place != waiting)
        if (const auto error = files_.Rename(place, waiting)) return error;
    place = std::move(waiting);
    return ReplaceMod(files_, staging_, modLibrary_, placed.name);
}

PlacedMod ModIntake::Place(std::size_t mod, const std::string& name, bool replace) {
    PlacedMod placed{{}, name, false};
    Waiting& waiting = waiting_[mod];
    placed.error = MovePapers(layout_.mods[mod], waiting);
    if (placed.error) return placed;
    placed.error =
        replace ? ReplaceBy(waiting.place, placed) : files_.Rename(waiting.place, Join(modLibrary_, name));
    return placed;
}

} // namespace quillbay
