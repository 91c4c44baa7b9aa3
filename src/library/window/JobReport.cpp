#include "library/window/JobReport.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "platform/PassingError.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

QString NothingWasInstalled(InstallOutcome outcome) {
    switch (outcome) {
    case InstallOutcome::Done:
    case InstallOutcome::Refused: // the refusal says it
        return {};
    case InstallOutcome::NoRights:
        return QStringLiteral("Nothing was installed, because Quillbay is not allowed to write there.");
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

/// "C:\\Game\\odf\\a.odf: is open in another program" for each.
std::vector<std::string> WithReasons(const std::vector<FailedFile>& failed) {
    std::vector<std::string> texts;
    for (const auto& [path, error] : failed)
        texts.push_back(path + ": " +
                        (IsInUse(error) ? "is open in another program" : FromQString(Reason(error))));
    return texts;
}

/// What the player can do something about.
OutcomeText& TellInUse(OutcomeText& text, std::initializer_list<const std::vector<FailedFile>*> failures) {
    std::size_t count = 0;
    for (const auto* failed : failures)
        count += static_cast<std::size_t>(
            std::ranges::count_if(*failed, [](const FailedFile& file) { return IsInUse(file.error); }));
    if (count == 0) return text;
    return text.Add(count == 1 ? QStringLiteral("1 of them is open in another program")
                               : QStringLiteral("%1 of them are open in another program").arg(count));
}

/// The first of the reasons for which `Backup` is still there; empty when it is gone.
QString WhyBackupStays(const UninstallResult& result) {
    const std::pair<std::vector<std::string>, QString> reasons[] = {
        {WithReasons(result.notRestored),
         QStringLiteral("%1 saved file(s) could not be put back into the game.")},
        {WithReasons(result.notDeleted),
         QStringLiteral("%1 file(s) of the mod could not be removed from the game.")},
        {result.notHandedOver,
         QStringLiteral("%1 saved file(s) of mods that were installed later could not be corrected.")},
        {result.strangers, QStringLiteral("%1 file(s) in it do not belong to the mod's present files.")},
    };
    for (const auto& [paths, text] : reasons)
        if (!paths.empty()) return text.arg(paths.size()) + QStringLiteral("\n\n") + ShownPath(paths.front());
    return result.backupNotRemoved ? Reason(result.backupNotRemoved) : QString();
}

/// "214 files: 12 replace the game's, 3 Beta's." The parts that are empty are left out.
QString Sentence(const QString& beginning, const QStringList& parts, const QString& between) {
    QStringList said;
    for (const QString& part : parts)
        if (!part.isEmpty()) said << part;
    return said.isEmpty() ? beginning + u'.' : beginning + between + said.join(QStringLiteral(", ")) + u'.';
}

QString Counted(std::size_t count, const QString& what) {
    return count == 0 ? QString() : QString::number(count) + what;
}

QString WasInto(const std::string& otherGame) {
    return otherGame.empty() ? QString()
                             : QStringLiteral("It was installed into %1.").arg(ShownPath(otherGame));
}

QString Joined(const QString& first, const QString& second) {
    return first.isEmpty() || second.isEmpty() ? first + second : first + u' ' + second;
}

/// What happened to the files, and why the mod still counts as installed if it does.
OutcomeText WithFiles(OutcomeText text, const UninstallResult& result) {
    text.Count(result.deleted, QStringLiteral("removed"))
        .Count(result.restored, QStringLiteral("restored"))
        .Files(PlacesOf(result.kept), QStringLiteral("kept in Changed"))
        .Files(result.notOurs, QStringLiteral("kept because they are not the mod's"))
        .Files(WithReasons(result.notDeleted), QStringLiteral("could not be removed"))
        .Files(WithReasons(result.notRestored), QStringLiteral("could not be restored"))
        .Files(result.notHandedOver, QStringLiteral("saved by later mods could not be corrected"))
        .Files(result.strangers, QStringLiteral("in Backup are not the mod's"))
        .Note(WhyStillInstalled(result));
    TellInUse(text, {&result.notDeleted, &result.notRestored});
    for (const auto& [mod, count] : result.wentWithIt)
        text.Add(ToQString(mod) + QStringLiteral("'s ") +
                 (count == 1 ? QStringLiteral("file") : QString::number(count) + QStringLiteral(" files")) +
                 QStringLiteral(" went with it: install ") + ToQString(mod) +
                 QStringLiteral(" again to have ") +
                 (count == 1 ? QStringLiteral("it") : QStringLiteral("them")));
    return text;
}

} // namespace

QString Describe(const InstallPreview& preview) {
    QStringList parts(Counted(preview.replaced, preview.replaced == 1
                                                    ? QStringLiteral(" replaces the game's")
                                                    : QStringLiteral(" replace the game's")));
    for (const auto& [mod, count] : preview.ofOthers)
        parts << QStringLiteral("%1 %2's").arg(count).arg(ToQString(mod));
    parts << Counted(preview.there, preview.there == 1 ? QStringLiteral(" is there already")
                                                       : QStringLiteral(" are there already"));
    const bool isPlain = preview.replaced + preview.there == 0 && preview.ofOthers.empty();
    return Joined(WasInto(preview.otherGame),
                  isPlain ? QString() : Sentence(FileCount(preview.files), parts, QStringLiteral(": ")));
}

QString Describe(const InstalledState& state) {
    if (state.IsAsInstalled()) return {};
    const QString kept = QStringLiteral(" changed since and will be kept in Changed");
    const QString staying = QStringLiteral(" changed since and will stay in the game");
    const auto was = [](std::size_t count) {
        return count == 1 ? QStringLiteral(" was") : QStringLiteral(" were");
    };
    QStringList parts(Counted(state.changed, was(state.changed) + kept));
    parts << Counted(state.changedNew, was(state.changedNew) + staying)
          << Counted(state.missing,
                     state.missing == 1 ? QStringLiteral(" is missing") : QStringLiteral(" are missing"));
    for (const auto& [mod, count] : state.byOthers)
        parts << Counted(count, was(count) + QStringLiteral(" replaced by ") + ToQString(mod));
    const QString beginning =
        QStringLiteral("%1 of %2 files are as installed").arg(state.inPlace).arg(state.files);
    return Joined(WasInto(state.otherGame), state.inPlace == state.files
                                                ? QString()
                                                : Sentence(beginning, parts, QStringLiteral(", ")));
}

QString DescribeInstalled(const InstalledState& state) {
    if (state.files == 0) return {};
    if (state.inPlace == state.files)
        return Joined(QStringLiteral("All %1 files are in place.").arg(state.files),
                      WasInto(state.otherGame));
    QStringList parts(Counted(state.changed + state.changedNew, QStringLiteral(" changed")));
    parts << Counted(state.missing, QStringLiteral(" missing"));
    for (const auto& [mod, count] : state.byOthers)
        parts << Counted(count, QStringLiteral(" replaced by ") + ToQString(mod));
    return Joined(Sentence(QStringLiteral("%1 of %2 files are in place").arg(state.inPlace).arg(state.files),
                           parts, QStringLiteral(", ")),
                  WasInto(state.otherGame));
}

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
    OutcomeText text(name + QStringLiteral(" is installed"));
    static_assert(kNamedFiles >= OutcomeText::kMostNamedFiles);
    text.Files(result.firstInstalled, QStringLiteral("copied"),
               result.installed - result.firstInstalled.size())
        .Count(result.saved, QStringLiteral("of the game's saved"))
        .Phrase(OfOthers(result.replaced), QStringLiteral(" replaced"))
        .Count(back.restored + back.deleted, QStringLiteral("of its former version given back"))
        .Files(PlacesOf(result.kept), QStringLiteral("kept in Changed"))
        .Files(WithReasons(result.notSaved), QStringLiteral("skipped because the game's could not be saved"))
        .Files(WithReasons(result.notCopied), QStringLiteral("could not be copied"))
        .Files(WithReasons(back.notRestored), QStringLiteral("of its former version could not be given back"))
        .Files(WithReasons(back.notDeleted), QStringLiteral("of its former version could not be removed"))
        .Files(back.notHandedOver, QStringLiteral("saved by later mods could not be corrected"));
    return TellInUse(text, {&result.notSaved, &result.notCopied, &back.notRestored, &back.notDeleted});
}

QString DescribeOrder(const std::vector<InstalledMod>& newestFirst, const std::string& game) {
    std::vector<std::string> names;
    std::size_t ofOtherGames = 0;
    for (const auto& mod : newestFirst) {
        names.emplace_back(mod.Name());
        if (mod.record && mod.record->game != game) ++ofOtherGames;
    }
    const QString order =
        QStringLiteral("In this order: %1.")
            .arg(OutcomeText::Names(names, OutcomeText::kMostNamedFiles, QStringLiteral(", ")));
    return Joined(order, Counted(ofOtherGames, QStringLiteral(" of them went into another game directory.")));
}

OutcomeText Describe(const UninstallSummary& summary) {
    const std::size_t count = summary.uninstalled.size();
    QString beginning = count == 1 ? QStringLiteral("1 mod is uninstalled")
                                   : QStringLiteral("%1 mods are uninstalled").arg(count);
    if (!summary.stopped.empty())
        beginning +=
            QStringLiteral(", ") + ToQString(summary.stopped) + QStringLiteral(" still counts as installed");
    return WithFiles(OutcomeText(beginning), summary.total);
}

OutcomeText Describe(const UninstallResult& result, const QString& name) {
    return WithFiles(
        OutcomeText(name + (result.StaysInstalled() ? QStringLiteral(" still counts as installed")
                                                    : QStringLiteral(" is uninstalled"))),
        result);
}

} // namespace quillbay
