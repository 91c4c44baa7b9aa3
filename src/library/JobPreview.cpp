#include "library/JobPreview.h"

namespace quillbay {

namespace {

std::string OtherGame(const JobPlan& plan) {
    return plan.IsOfAnotherGame() ? plan.Record()->game : std::string();
}

} // namespace

InstallPreview Preview(const FileSystem& files, const InstallPlan& plan) {
    InstallPreview preview;
    preview.otherGame = OtherGame(plan);
    FileOwners owners(files, plan.otherMods);
    for (const auto& item : plan.items) {
        const auto& place = item.place;
        if (place.gameIsBlocked) continue;
        ++preview.files;
        if (!place.game) continue;
        LookedAtFile present(files, place.game.Path(), place.gameIsLink);
        const auto& info = present.Info();
        if (info && !place.gameIsLink && info->size == item.size && info->modified == item.modified)
            ++preview.there;
        else if (const auto* owner = owners.GuessOwner(present, place.position, place.name))
            ++preview.ofOthers[std::string(owner->Name())];
        else if (!place.recorded || !present.Resembles(*place.recorded))
            ++preview.replaced;
    }
    return preview;
}

InstalledState LookAtInstalled(const FileSystem& files, const UninstallPlan& plan) {
    InstalledState state;
    state.otherGame = OtherGame(plan);
    FileOwners owners(files, plan.otherMods);
    for (const auto& place : plan.places) {
        if (!place.recorded || place.recorded->state == RecordedState::GivenBack) continue;
        ++state.files;
        if (!place.game) {
            ++state.missing;
            continue;
        }
        LookedAtFile present(files, place.game.Path(), place.gameIsLink);
        if (present.Resembles(*place.recorded))
            ++state.inPlace;
        else if (const auto* owner = owners.GuessOwner(present, place.position, place.name))
            ++state.byOthers[std::string(owner->Name())];
        else
            ++(!place.saved ? state.changedNew : state.changed);
    }
    return state;
}

} // namespace quillbay
