#include "library/window/IntakeReport.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"

#include <QFileInfo>

#include <string>

namespace quillbay {

namespace {

QString ReasonOf(const IntakeFailure& failure) {
    switch (failure.problem) {
    case IntakeProblem::None:
    case IntakeProblem::Stopped:
        return {};
    case IntakeProblem::Unreadable:
        return Reason(failure.error) + u'.';
    case IntakeProblem::Unwritable:
        return QStringLiteral("A file or folder of it could not be written.");
    case IntakeProblem::NoRoom:
        return QStringLiteral("Too little room would be left on the disk.");
    case IntakeProblem::TooLarge:
        return QStringLiteral("It is too large for a mod: more than 8 GB, or more than 200,000 files.");
    case IntakeProblem::LeadsOut:
        return QStringLiteral("A name in it leads out of the mod's folder.");
    case IntakeProblem::Empty:
        return QStringLiteral("There is no file in it that belongs to a mod.");
    case IntakeProblem::InsideLibrary:
        return QStringLiteral("The folder is the mods folder, holds it or lies in it.");
    }
    return {};
}

QString ReasonOf(LeftOutReason reason) {
    switch (reason) {
    case LeftOutReason::Link:
        return QStringLiteral("a link or a device");
    case LeftOutReason::Name:
        return QStringLiteral("a name that not every system can keep");
    case LeftOutReason::Backup:
        return QStringLiteral("the mod would count as installed");
    case LeftOutReason::Clutter:
        return QStringLiteral("no part of a mod");
    case LeftOutReason::Superseded:
        return QStringLiteral("a later file has the same name");
    case LeftOutReason::FileAndFolder:
        return QStringLiteral("there is a file and a folder of this name");
    case LeftOutReason::BesideSeveralMods:
        return QStringLiteral("it lies beside several mods");
    }
    return {};
}

QString NamesOf(const std::vector<LeftOut>& leftOut) {
    std::vector<std::string> named;
    for (const LeftOut& one : leftOut)
        named.push_back(one.path + ": " + FromQString(ReasonOf(one.reason)));
    return QStringLiteral("%1 left out:\n").arg(leftOut.size()) +
           OutcomeText::Names(named, OutcomeText::kMostNamedFiles, QStringLiteral("\n"));
}

} // namespace

QString WhyNotTaken(const IntakeFailure& failure, const QString& path) {
    const QString reason = ReasonOf(failure);
    if (reason.isEmpty()) return {};
    QString text = QFileInfo(path).fileName() + QStringLiteral(" was not taken into the library. ") + reason;
    const bool isSystems = failure.problem == IntakeProblem::Unwritable;
    if (failure.path.empty()) return text;
    return WithPath(text, failure.path, isSystems ? failure.error : std::error_code());
}

OutcomeText Describe(const IntakeSummary& summary) {
    std::size_t files = 0;
    QStringList names;
    QStringList each;
    bool wasInstalled = false;
    bool isSorted = true;
    for (const auto& mod : summary.mods) {
        files += mod.files;
        names << ToQString(mod.name);
        each << ToQString(mod.name) + QStringLiteral(": ") + FileCount(mod.files);
        wasInstalled = wasInstalled || mod.wasInstalled;
        isSorted = isSorted && mod.isSorted;
    }
    const bool isOne = names.size() == 1;
    QString beginning = isOne ? names.front() + QStringLiteral(" is in the library: ")
                              : QStringLiteral("%1 mods are in the library: ").arg(names.size());
    beginning += FileCount(files);
    if (!summary.leftOut.empty()) beginning += QStringLiteral("; %1 left out").arg(summary.leftOut.size());
    if (wasInstalled) beginning += QStringLiteral("; install it again to bring the game up to date");
    if (!isSorted)
        beginning += QStringLiteral("; the file installer sorts its files into the game's folders");
    OutcomeText outcome(beginning);
    if (!isOne) outcome.Note(each.join(u'\n'));
    if (!summary.leftOut.empty()) outcome.Note(NamesOf(summary.leftOut));
    return outcome;
}

} // namespace quillbay
