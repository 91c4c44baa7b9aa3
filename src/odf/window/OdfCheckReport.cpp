#include "odf/window/OdfCheckReport.h"

#include "common/window/QtText.h"
#include "odf/OdfCheckRun.h"

namespace quillbay {

namespace {

QString Beginning(const OdfCheckRun& run, bool isWhole) {
    const QString noun = QLatin1String(run.Odfs() == 1 ? "file" : "files");
    if (isWhole) return QStringLiteral("%1 %2 checked").arg(run.Checked()).arg(noun);
    return QStringLiteral("The check was ended after %1 of %2 %3")
        .arg(run.Checked())
        .arg(run.Odfs())
        .arg(noun);
}

/// A count, and its files in the tool tip.
void Add(OutcomeText& text, const std::vector<std::string>& files, const QString& what) {
    if (files.empty()) return;
    text.Phrase(QString::number(files.size()), what);
    text.Note(QString::number(files.size()) + what + QStringLiteral(":\n") +
              OutcomeText::Names(files, OutcomeText::kMostNamedFiles, QStringLiteral("\n")));
}

} // namespace

OutcomeText Describe(const OdfCheckRun& run, bool isWhole) {
    std::vector<std::string> ignored;
    for (const OdfPlace& place : run.Ignored())
        ignored.push_back(FromQString(ShownPlace(place)));
    if (const auto& error = run.Error())
        ignored.push_back(FromQString(ShownPlace({error->path, error->line})));
    std::vector<std::string> passedOver;
    for (const std::string& path : run.PassedOver())
        passedOver.push_back(FromQString(ShownPath(path)));

    const bool hasError = run.Repaired() > 0 || !ignored.empty();
    OutcomeText text(Beginning(run, isWhole) + QLatin1String(hasError ? "" : ", no error"));
    if (run.Repaired() > 0) text.Phrase(QString::number(run.Repaired()), QStringLiteral(" repaired"));
    Add(text, ignored, QStringLiteral(" ignored"));
    if (run.Rewritten() > 0)
        text.Phrase(QString::number(run.Rewritten()), QStringLiteral(" rid of unused lines"));
    Add(text, passedOver, QStringLiteral(" could not be read or written"));
    return text;
}

QString ShownPlace(const OdfPlace& place) {
    return QStringLiteral("%1, line %2").arg(ShownPath(place.path)).arg(place.line + 1);
}

} // namespace quillbay
