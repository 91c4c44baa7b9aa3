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

OutcomeText& OutcomeText::Files(const std::vector<std::string>& files, const QString& what) {
    return Files(files, files.size(), what);
}

OutcomeText& OutcomeText::Files(const std::vector<std::string>& first, std::size_t total,
                                const QString& what) {
    if (total == 0) return *this;
    Count(total, what);
    return Note(counts_.back() + QStringLiteral(":\n") +
                Names(first, total, kMostNamedFiles, QStringLiteral("\n")));
}

QString OutcomeText::Names(const std::vector<std::string>& files, std::size_t most, const QString& between) {
    return Names(files, files.size(), most, between);
}

QString OutcomeText::Names(const std::vector<std::string>& first, std::size_t total, std::size_t most,
                           const QString& between) {
    QStringList names;
    const std::size_t named = std::min(first.size(), most);
    for (std::size_t at = 0; at < named; ++at)
        names << ShownPath(first[at]);
    if (named < total) names << QStringLiteral("and %1 more").arg(total - named);
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
