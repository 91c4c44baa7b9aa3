#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <string>
#include <vector>

namespace quillbay {

/// "1 file", "212 files".
QString FileCount(std::size_t files);

/// What a command did, in one sentence with counts, and the files concerned below it.
class OutcomeText {
public:
    /// `beginning` is a whole sentence without its final point.
    explicit OutcomeText(QString beginning) : beginning_(std::move(beginning)) {}

    /// `what` says what was done to the files, for example "copied". A count of 0 is not mentioned.
    OutcomeText& Count(std::size_t files, const QString& what);
    /// The same, and the tool tip names the files. `unnamed` counts those behind them whose names nobody
    /// kept.
    OutcomeText& Files(const std::vector<std::string>& files, const QString& what, std::size_t unnamed = 0);
    /// Among the counts, as it stands; not mentioned when `what` is empty.
    OutcomeText& Phrase(const QString& what, const QString& done);
    /// A second sentence, without its final point.
    OutcomeText& Add(const QString& sentence);
    /// A reason or a file that the tool tip shows only.
    OutcomeText& Note(const QString& text);

    QString Sentence() const;
    /// The sentence and what is below it, in plain text; at most kMostNamedFiles files of each kind.
    QString ToolTip() const;

    static constexpr std::size_t kMostNamedFiles = 15;
    /// The first files, and how many more there are.
    static QString Names(const std::vector<std::string>& files, std::size_t most, const QString& between,
                         std::size_t unnamed = 0);

private:
    QString beginning_;
    QStringList counts_;
    QStringList sentences_;
    QStringList paragraphs_;
};

} // namespace quillbay
