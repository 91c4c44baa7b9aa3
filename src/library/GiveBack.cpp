#include "library/GiveBack.h"

#include "platform/PathText.h"

namespace quillbay {

PlaceFinder::PlaceFinder(const JobPlan& plan) : game_(plan.gameFolders), saved_(plan.backupFolders) {
    if (plan.Record()) record_.emplace(plan.Record()->files);
}

GamePlace PlaceFinder::Find(std::size_t position, const std::string& name) {
    GamePlace place;
    place.position = position;
    place.name = name;
    if (record_) place.recorded = record_->Find(position, name);
    const auto* copy = saved_.Find(position, name);
    if (copy && IsReplaceable(*copy)) {
        place.name = copy->name;
        place.saved = saved_.FileOf(position, *copy);
        place.savedIsLink = copy->isLink;
    }
    if (const auto* inGame = game_.Find(position, place.name)) {
        place.game = game_.FileOf(position, *inGame);
        place.gameIsLink = inGame->isLink;
        place.gameIsBlocked = !IsReplaceable(*inGame);
        if (!place.saved) place.name = inGame->name;
    }
    return place;
}

std::vector<GamePlace> FindOtherRecorded(const JobPlan& plan,
                                         const std::unordered_set<const RecordedFile*>& present) {
    PlaceFinder finder(plan);
    std::vector<GamePlace> places;
    for (const auto& recorded : plan.Record()->files)
        if (!present.contains(&recorded)) places.push_back(finder.Find(recorded.position, recorded.name));
    return places;
}

std::vector<LaterMod> ListLaterMods(const FileSystem& files, JobPlan& plan) {
    std::vector<LaterMod> later;
    for (const auto& mod : plan.otherMods) {
        const auto last = mod.record ? mod.record->lastNumber : mod.order;
        if (!plan.installed || last <= plan.installed->order) continue;
        later.push_back({&mod, ListKnownFolders(files, mod.backup, Detail::Names, &plan.failure)});
        AddLeftovers(later.back().backupFolders, plan.leftoverFiles);
    }
    return later;
}

void EndSharing(FileSystem& files, const std::string& copy) {
    const auto info = files.StatContents(copy);
    if (info && info->kind != EntryKind::Folder && info->links > 1)
        Ignore(files.Copy(copy, copy, {.replace = true, .keepLink = true, .flush = true}));
}

GiveBack::GiveBack(FileSystem& files, const JobPlan& plan, FolderMaker& gameFolders, GameGuard& guard,
                   GiveBackResult& result)
    : files_(files), plan_(plan), gameFolders_(gameFolders), guard_(guard), secondPlace_(files),
      result_(result) {}

bool GiveBack::Delete(const GamePlace& place) {
    if (!place.game || place.gameIsBlocked) return true;
    LookedAtFile file(files_, place.game.Path(), place.gameIsLink);
    const auto own = guard_.IsModsOwn(file, place);
    if (!own || !*own) {
        if (plan_.installed) {
            if (own)
                result_.notOurs.push_back(place.game.Path());
            else
                result_.notDeleted.push_back({place.game.Path(), own.Error()});
            return false;
        }
        // Without a backup every file of these names goes, but not for good.
        if (place.mod && file.IsSameFileAs(place.mod.Path())) {
            result_.notOurs.push_back(place.game.Path());
            return false;
        }
        if (const auto error = guard_.Secure(file, place)) {
            result_.notDeleted.push_back({place.game.Path(), error});
            return false;
        }
    }
    if (const auto error = files_.RemoveFile(place.game.Path())) {
        guard_.StaysInGame(file);
        result_.notDeleted.push_back({place.game.Path(), error});
        return false;
    }
    ++result_.deleted;
    return true;
}

GiveBack::Restored GiveBack::Restore(const GamePlace& place, SavedCopy copy) {
    const auto restored = PutBackUnlessThere(place, copy);
    if (!restored) {
        result_.notRestored.push_back({place.saved.Path(), restored.Error()});
        return Restored::No;
    }
    ++result_.restored;
    return *restored;
}

Result<GiveBack::Restored> GiveBack::PutBackUnlessThere(const GamePlace& place, SavedCopy copy) {
    if (place.gameIsBlocked) return std::errc::is_a_directory;
    if (!place.game) return PutBack(place, copy);
    LookedAtFile file(files_, place.game.Path(), place.gameIsLink);
    const auto own = guard_.IsModsOwn(file, place);
    if (own && *own) return PutBack(place, copy);
    if (IsBackAlready(file, place, copy)) return Restored::Yes;
    if (const auto error = guard_.Secure(file, place)) return error;
    auto restored = PutBack(place, copy);
    if (!restored) guard_.StaysInGame(file);
    return restored;
}

Result<GiveBack::Restored> GiveBack::PutBack(const GamePlace& place, SavedCopy copy) {
    const auto folder = gameFolders_.Ensure(place.position);
    if (!folder) return folder.Error();
    const auto target = Join(*folder, place.name);
    const bool replaces = bool(place.game);
    std::error_code error;
    if (replaces && place.game.name != place.name && (error = files_.Rename(place.game.Path(), target)))
        return error;
    if (copy == SavedCopy::MayLeave && canMove_) {
        error = replaces ? files_.RenameOver(place.saved.Path(), target)
                         : files_.Rename(place.saved.Path(), target);
        if (!error) return Restored::ByMoving;
        if (error != std::errc::cross_device_link) return error;
        canMove_ = false;
    }
    error = copy == SavedCopy::Stays ? files_.Copy(place.saved.Path(), target,
                                                   {.replace = replaces, .keepLink = true, .flush = true})
                                     : secondPlace_.Give(place.saved.Path(), target, replaces);
    return error ? Result<Restored>(error) : Restored::Yes;
}

bool GiveBack::IsBackAlready(LookedAtFile& file, const GamePlace& place, SavedCopy copy) {
    if (place.game.name != place.name) return false;
    if (!place.gameIsLink) {
        if (place.savedIsLink) return false;
        const auto saved = files_.StatContents(place.saved.Path());
        const auto& game = file.Info();
        if (!saved || !game || saved->size != game->size || saved->modified != game->modified ||
            saved->readOnly != game->readOnly)
            return false;
        // What stays in `Backup` and what is in the game are two files.
        if (copy == SavedCopy::Stays && saved->links > 1) return false;
    }
    const auto same = file.Equals(place.saved.Path(), place.savedIsLink);
    return same && *same;
}

std::unordered_set<const GamePlace*> GiveBack::HandOver(const std::vector<LaterMod>& laterMods,
                                                        const std::vector<const GamePlace*>& places) {
    std::unordered_set<const GamePlace*> failed;
    for (const auto& later : laterMods) {
        EntryIndex copies(later.backupFolders);
        std::optional<RecordIndex> record;
        if (later.mod->record) record.emplace(later.mod->record->files);
        std::vector<const GamePlace*> noted;
        for (const auto* place : places) {
            const auto* copy = copies.Find(place->position, place->name);
            if (!copy || copy->kind != EntryKind::File || copy->isLink) continue;
            const auto path = copies.PathOf(place->position, *copy);
            const auto* recorded = record ? record->Find(place->position, place->name) : nullptr;
            const auto isOurs = IsInstalledHere(*place, path, SavedBy(*later.mod, recorded));
            if (isOurs && !*isOurs) continue;
            // Its own file was there before this mod's: then it has to save nothing.
            const auto isTheirs = recorded && place->saved
                                      ? LookedAtFile(files_, place->saved.Path(), place->savedIsLink)
                                            .HoldsSaved(*recorded, SavedBy(*plan_.installed, place->recorded))
                                      : Result<bool>(false);
            if (isOurs && isTheirs) {
                const bool isGone = !place->saved || *isTheirs;
                const auto error = isGone ? files_.RemoveFile(path)
                                          : files_.Copy(place->saved.Path(), path,
                                                        {.replace = true, .keepLink = true, .flush = true});
                if (!error && !isGone && recorded) {
                    guard_.SetSavedBy(*later.mod, *recorded, SavedBy(*plan_.installed, place->recorded));
                    noted.push_back(place);
                }
                if (!error) continue;
            }
            result_.notHandedOver.push_back(path);
            failed.insert(place);
        }
        // A copy counts as a version of a mod only when that was in the game at the time.
        if (noted.empty() || !guard_.WriteRecord(*later.mod)) continue;
        result_.notHandedOver.push_back(later.mod->backup);
        failed.insert(noted.begin(), noted.end());
    }
    return failed;
}

Result<bool> GiveBack::IsInstalledHere(const GamePlace& place, const std::string& copy,
                                       std::int64_t savedBy) const {
    LookedAtFile file(files_, copy, false);
    if (place.recorded) return file.HoldsSaved(*place.recorded, savedBy);
    return place.mod ? file.Equals(place.mod.Path(), false) : Result<bool>(false);
}

bool GiveBack::MayBeModsOwn(const GamePlace& place) const {
    if (place.savedIsLink) return false;
    LookedAtFile file(files_, place.saved.Path(), false);
    const auto own = place.recorded ? file.Holds(*place.recorded, 0)
                     : place.mod    ? file.Equals(place.mod.Path(), false)
                                    : Result<bool>(false);
    return !own || *own;
}

} // namespace quillbay
