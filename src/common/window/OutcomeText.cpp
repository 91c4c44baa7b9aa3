#include "common/window/OutcomeText.h"

#include "common/window/QtText.h"

#include <algorithm>

namespace quillbay {

QString FileCount(std::size_t files) {
    return files == 1 ? QStringLiteral("1 file") : QString::number(files) + QStringLiteral(" files");
}

OutcomeText& OutcomeText::Count(std::size_t files, const QString& what) {
    if (files == 0) return *this;
    counts_ << (counts_.isEmpty() ? FileCount(files) : QString::number(files)) + u' ' + what;
    return *this;
}

OutcomeText& OutcomeText::Files(const std::vector<std::string>& files, const QString& what,
                                std::size_t unnamed) {
    if (files.empty()) return *this;
    Count(files.size() + unnamed, what);
    return Note(counts_.back() + QStringLiteral(":\n") +
                Names(files, kMostNamedFiles, QStringLiteral("\n"), unnamed));
}

QString OutcomeText::Names(const std::vector<std::string>& files, std::size_t most, const QString& between,
                           std::size_t unnamed) {
    QStringList names;
    const std::size_t named = std::min(files.size(), most);
    for (std::size_t at = 0; at < named; ++at)
        names << ShownPath(files[at]);
    if (const auto others = files.size() + unnamed - named; others > 0)
        names << QStringLiteral("and %1 more").arg(others);
    return names.join(between);
}

OutcomeText& OutcomeText::Phrase(const QString& what, const QString& done) {
    if (!what.isEmpty()) counts_ << what + done;
    return *this;
}

OutcomeText& OutcomeText::Add(const QString& sentence) {
    sentences_ << sentence;
    return *this;
}

OutcomeText& OutcomeText::Note(const QString& text) {
    if (!text.isEmpty()) paragraphs_ << text;
    return *this;
}

QString OutcomeText::Sentence() const {
    const QString counts = counts_.join(QStringLiteral(", "));
    const QString first = counts.isEmpty() ? beginning_ : beginning_ + QStringLiteral(": ") + counts;
    return (QStringList(first) + sentences_).join(QStringLiteral(". ")) + u'.';
}

QString OutcomeText::ToolTip() const {
    return (QStringList(Sentence()) + paragraphs_).join(QStringLiteral("\n\n"));
}

} // namespace quillbay
