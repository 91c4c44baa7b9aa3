#include "library/window/JobReport.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"

#include <string>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

QString NothingWasInstalled(InstallOutcome outcome) {
    switch (outcome) {
    case InstallOutcome::Done:
        return {};
    case InstallOutcome::Unreadable:
        return QStringLiteral("Nothing was installed, because this could not be read.");
    case InstallOutcome::NoBackup:
        return QStringLiteral("Nothing was installed, because the backup could not be made.");
    case InstallOutcome::UnsafeFile:
        return QStringLiteral("Nothing was installed, because this file of the game could not be saved.");
    }
    return {};
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
    return WithPath(NothingWasInstalled(result.outcome), result.concerned, result.error);
}

QString WhyStillInstalled(const UninstallResult& result) {
    if (result.failure)
        return WithPath(QStringLiteral("Nothing was uninstalled, because this could not be read."),
                        result.failure.path, result.failure.error);
    if (!result.BackupStays()) return {};
    return QStringLiteral("The mod's Backup folder stays, and the mod still counts as installed. ") +
           WhyBackupStays(result);
}

OutcomeText Describe(const InstallResult& result, const QString& name) {
    if (result.outcome != InstallOutcome::Done)
        return OutcomeText(name + QStringLiteral(" was not installed")).Note(WhyNotInstalled(result));
    return OutcomeText(name + QStringLiteral(" is installed"))
        .Count(result.installed, QStringLiteral("copied"))
        .Count(result.saved, QStringLiteral("of the game's saved"))
        .Files(result.notSaved, QStringLiteral("skipped because the game's could not be saved"))
        .Files(result.notCopied, QStringLiteral("could not be copied"));
}

OutcomeText Describe(const UninstallResult& result, const QString& name) {
    const bool stays = result.failure || result.BackupStays();
    return OutcomeText(name + (stays ? QStringLiteral(" still counts as installed")
                                     : QStringLiteral(" is uninstalled")))
        .Count(result.deleted, QStringLiteral("removed"))
        .Count(result.restored, QStringLiteral("restored"))
        .Files(result.notOurs, QStringLiteral("kept because they are not the mod's"))
        .Files(result.notDeleted, QStringLiteral("could not be removed"))
        .Files(result.notRestored, QStringLiteral("could not be restored"))
        .Files(result.notHandedOver, QStringLiteral("saved by later mods could not be corrected"))
        .Files(result.strangers, QStringLiteral("in Backup are not the mod's"))
        .Note(WhyStillInstalled(result));
}

} // namespace quillbay
