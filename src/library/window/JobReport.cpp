#include "library/window/JobReport.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

QString NothingWasInstalled(InstallOutcome outcome) {
    switch (outcome) {
    case InstallOutcome::Done:
        return {};
    case InstallOutcome::Refused:
        return {}; // the refusal says it
    case InstallOutcome::Unreadable:
        return QStringLiteral("Nothing was installed, because this could not be read.");
    case InstallOutcome::NoBackup:
        return QStringLiteral("Nothing was installed, because the backup could not be made.");
    case InstallOutcome::UnsafeFile:
        return QStringLiteral("Nothing was installed, because this file of the game could not be saved.");
    case InstallOutcome::NothingCopied:
        return QStringLiteral(
            "Nothing was installed, because not one of the mod's files could be copied into the "
            "game.");
    }
    return {};
}

/// Why a job was not begun.
QString WhyRefused(Refusal refusal) {
    switch (refusal) {
    case Refusal::None:
        return {};
    case Refusal::LeadsIntoGame:
        return QStringLiteral(
            "The mod and the game lead into each other through this, so nothing was changed: a file "
            "of the one would be taken for a file of the other.");
    case Refusal::BackupIsLink:
        return QStringLiteral(
            "The mod's Backup folder is a link, so nothing was changed: the game's files would be "
            "saved in another place.");
    }
    return {};
}

/// "3 of Beta's" for each mod, joined by commas.
QString OfOthers(const std::map<std::string, std::size_t>& files) {
    QStringList parts;
    for (const auto& [mod, count] : files)
        parts << QString::number(count) + QStringLiteral(" of ") + ToQString(mod) + QStringLiteral("'s");
    return parts.join(QStringLiteral(", "));
}

std::vector<std::string> PlacesOf(const std::map<std::string, std::string>& kept) {
    std::vector<std::string> places;
    for (const auto& [file, place] : kept)
        places.push_back(place);
    return places;
}

/// The first of the reasons for which `Backup` is still there; empty when it is gone.
QString WhyBackupStays(const UninstallResult& result) {
    const std::pair<const std::vector<std::string>&, QString> reasons[] = {
        {result.notRestored, QStringLiteral("%1 saved file(s) could not be put back into the game.")},
        {result.notDeleted, QStringLiteral("%1 file(s) of the mod could not be removed from the game.")},
        {result.notHandedOver,
         QStringLiteral("%1 saved file(s) of mods that were installed later could not be corrected.")},
        {result.strangers, QStringLiteral("%1 file(s) in it do not belong to the mod's present files.")},
    };
    for (const auto& [paths, text] : reasons)
        if (!paths.empty()) return text.arg(paths.size()) + QStringLiteral("\n\n") + ToQString(paths.front());
    return result.backupNotRemoved ? Reason(result.backupNotRemoved) : QString();
}

} // namespace

QString WhyNotInstalled(const InstallResult& result) {
    if (result.outcome == InstallOutcome::Done) return {};
    if (result.outcome == InstallOutcome::Refused)
        return WithPath(WhyRefused(result.refusal), result.concerned, {});
    return WithPath(NothingWasInstalled(result.outcome), result.concerned, result.error);
}

QString WhyStillInstalled(const UninstallResult& result) {
    if (result.failure)
        return WithPath(QStringLiteral("Nothing was uninstalled, because this could not be read or written."),
                        result.failure.path, result.failure.error);
    if (result.refusal != Refusal::None) return WithPath(WhyRefused(result.refusal), result.refused, {});
    if (!result.BackupStays()) return {};
    return QStringLiteral("The mod's Backup folder stays, and the mod still counts as installed. ") +
           WhyBackupStays(result);
}

OutcomeText Describe(const InstallResult& result, const QString& name) {
    if (result.outcome != InstallOutcome::Done)
        return OutcomeText(name + QStringLiteral(" was not installed")).Note(WhyNotInstalled(result));
    const auto& back = result.givenBack;
    return OutcomeText(name + QStringLiteral(" is installed"))
        .Count(result.installed, QStringLiteral("copied"))
        .Count(result.saved, QStringLiteral("of the game's saved"))
        .Phrase(OfOthers(result.replaced), QStringLiteral(" replaced"))
        .Count(back.restored + back.deleted, QStringLiteral("of its former version given back"))
        .Files(PlacesOf(result.kept), QStringLiteral("had changed and were kept"))
        .Files(result.notSaved, QStringLiteral("skipped because the game's could not be saved"))
        .Files(result.notCopied, QStringLiteral("could not be copied"))
        .Files(back.notRestored, QStringLiteral("of its former version could not be given back"))
        .Files(back.notDeleted, QStringLiteral("of its former version could not be removed"))
        .Files(back.notHandedOver, QStringLiteral("saved by later mods could not be corrected"));
}

OutcomeText Describe(const UninstallResult& result, const QString& name) {
    const bool stays = result.failure || result.refusal != Refusal::None || result.BackupStays();
    OutcomeText text(
        name + (stays ? QStringLiteral(" still counts as installed") : QStringLiteral(" is uninstalled")));
    text.Count(result.deleted, QStringLiteral("removed"))
        .Count(result.restored, QStringLiteral("restored"))
        .Files(PlacesOf(result.kept), QStringLiteral("had changed and were kept"))
        .Files(result.notOurs, QStringLiteral("kept because they are not the mod's"))
        .Files(result.notDeleted, QStringLiteral("could not be removed"))
        .Files(result.notRestored, QStringLiteral("could not be restored"))
        .Files(result.notHandedOver, QStringLiteral("saved by later mods could not be corrected"))
        .Files(result.strangers, QStringLiteral("in Backup are not the mod's"))
        .Note(WhyStillInstalled(result));
    for (const auto& [mod, count] : result.wentWithIt)
        text.Add(ToQString(mod) + QStringLiteral("'s ") +
                 (count == 1 ? QStringLiteral("file") : QString::number(count) + QStringLiteral(" files")) +
                 QStringLiteral(" went with it: install ") + ToQString(mod) +
                 QStringLiteral(" again to have ") +
                 (count == 1 ? QStringLiteral("it") : QStringLiteral("them")));
    return text;
}

} // namespace quillbay
