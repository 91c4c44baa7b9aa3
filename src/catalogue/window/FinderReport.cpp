#include "catalogue/window/FinderReport.h"

#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"

#include <string>
#include <vector>

namespace quillbay {

namespace {

QString DoneWord(FileAction action) {
    switch (action) {
    case FileAction::Copy:
        return QStringLiteral("copied");
    case FileAction::Move:
        return QStringLiteral("moved");
    case FileAction::Delete:
        return QStringLiteral("deleted");
    }
    return {};
}

QString WhyNothing(FileActionRefusal::Cause cause) {
    using Cause = FileActionRefusal::Cause;
    switch (cause) {
    case Cause::GameUnreadable:
        return QStringLiteral("The game directory could not be read");
    case Cause::NoDestination:
        return QStringLiteral("The destination folder could not be read or made");
    case Cause::DestinationIsGame:
        return QStringLiteral("The path is that of the game directory itself");
    }
    return {};
}

/// "1 file one" or "3 files several. The first of them", and that file; empty without any.
QString FirstOf(const std::vector<std::string>& files, const QString& one, const QString& several,
                const std::error_code& error = {}) {
    if (files.empty()) return {};
    const QString sentence = FileCount(files.size()) + u' ' +
                             (files.size() == 1 ? one : several + QStringLiteral(". The first of them"));
    return WithPath(sentence + u':', files.front(), error);
}

} // namespace

OutcomeText Describe(const FileActionPlan& plan, const FileActionResult& result) {
    const QString done = DoneWord(plan.action);
    if (result.refusal)
        return OutcomeText(QStringLiteral("Nothing was ") + done).Note(Complaint(plan, result));
    return OutcomeText(QStringLiteral("Find Modified/New files"))
        .Count(result.done, done)
        .Files(result.failed, QStringLiteral("not ") + done)
        .Files(plan.kept, QStringLiteral("kept because the destination has them"))
        .Files(plan.unchanged, QStringLiteral("kept because they are as recorded"));
}

QString Complaint(const FileActionPlan& plan, const FileActionResult& result) {
    const QString done = DoneWord(plan.action);
    if (result.refusal) {
        const auto& [cause, concerned, error] = *result.refusal;
        return WithPath(WhyNothing(cause) + QStringLiteral(", so nothing was ") + done + u'.', concerned,
                        error);
    }
    QStringList paragraphs(FirstOf(result.failed, QStringLiteral("was not ") + done,
                                   QStringLiteral("were not ") + done, result.firstError));
    // The question before Delete has told it already.
    if (plan.action == FileAction::Move) paragraphs += TellUnchanged(plan);
    paragraphs.removeAll(QString());
    return paragraphs.join(QStringLiteral("\n\n"));
}

QString TellUnchanged(const FileActionPlan& plan) {
    return FirstOf(plan.unchanged, QStringLiteral("is no longer new or modified and stays in the game"),
                   QStringLiteral("are no longer new or modified and stay in the game"));
}

QString ListedFiles(const FileActionPlan& plan) {
    std::string text;
    for (const FileActionItem& item : plan.items)
        if (!item.from.empty()) text += item.name + '\n';
    return ToQString(text);
}

} // namespace quillbay
