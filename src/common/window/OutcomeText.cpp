#include "common/window/OutcomeText.h"

#include "common/window/QtText.h"

#include <algorithm>

namespace quillbay {

OutcomeText& OutcomeText::Count(std::size_t files, const QString& what) {
    if (files == 0) return *this;
    const QString noun = files == 1 ? QStringLiteral("file ") : QStringLiteral("files ");
    counts_ << QString::number(files) + u' ' + (counts_.isEmpty() ? noun : QString()) + what;
    return *this;
}

OutcomeText& OutcomeText::Files(const std::vector<std::string>& files, const QString& what) {
    if (files.empty()) return *this;
    Count(files.size(), what);
    QStringList lines(counts_.back() + u':');
    const std::size_t named = std::min(files.size(), kMostNamedFiles);
    for (std::size_t at = 0; at < named; ++at)
        lines << ToQString(files[at]);
    if (named < files.size()) lines << QStringLiteral("and %1 more").arg(files.size() - named);
    return Note(lines.join(u'\n'));
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
