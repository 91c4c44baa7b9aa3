#include "catalogue/CatalogueTime.h"

#include "platform/CaseFold.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

using namespace std::chrono;

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kFirstYearOf1900s = 30; ///< years of two digits below it are those after 2000

/// Takes numbers, marks and blanks off the front of a text; what does not fit makes it fail for good.
class TimeReader {
public:
    explicit TimeReader(std::string_view text) : rest_(text) { SkipBlanks(); }

    int TakeNumber() {
        int number = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc() || number < 0 || rest_.front() == '-') {
            failed_ = true;
            return 0;
        }
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return number;
    }
    bool Take(char mark) {
        if (!rest_.starts_with(mark)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    void Expect(char mark) { failed_ |= !Take(mark); }
    bool TakeWord(std::string_view word) {
        if (!StartsFolded(rest_, word)) return false;
        rest_.remove_prefix(word.size());
        SkipBlanks();
        return true;
    }
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }
    bool AtEnd() const { return rest_.empty(); }
    bool Failed() const { return failed_; }

private:
    std::string_view rest_;
    bool failed_ = false;
};

std::optional<local_days> ReadDate(TimeReader& reader) {
    const int monthNumber = reader.TakeNumber();
    reader.Expect('/');
    const int dayNumber = reader.TakeNumber();
    reader.Expect('/');
    int yearNumber = reader.TakeNumber();
    if (yearNumber < 100) yearNumber += yearNumber < kFirstYearOf1900s ? 2000 : 1900;
    if (reader.Failed() || monthNumber > 12 || dayNumber > 31 || yearNumber > kLastYear) return std::nullopt;
    const year_month_day date{year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                              day(static_cast<unsigned>(dayNumber))};
    if (!date.ok()) return std::nullopt;
    return local_days(date);
}

std::optional<seconds> ReadTimeOfDay(TimeReader& reader) {
    int hour = reader.TakeNumber();
    reader.Expect(':');
    const int minute = reader.TakeNumber();
    const int second = reader.Take(':') ? reader.TakeNumber() : 0;
    reader.SkipBlanks();
    const bool isMorning = reader.TakeWord("AM");
    const bool isEvening = !isMorning && reader.TakeWord("PM");
    const int lastHour = isMorning || isEvening ? 12 : 23;
    if (reader.Failed() || hour > lastHour || minute > 59 || second > 59) return std::nullopt;
    if (isMorning || isEvening) hour = hour % 12 + (isEvening ? 12 : 0);
    return hours(hour) + minutes(minute) + seconds(second);
}

std::string TwoDigits(long long number) { return (number < 10 ? "0" : "") + std::to_string(number); }

} // namespace

LocalTime CatalogueTime(FileTime time) {
    constexpr LocalTime kFirst = local_days(year(kFirstYear) / 1 / 1);
    constexpr LocalTime kLast = local_days(year(kLastYear + 1) / 1 / 1) - seconds(1);
    return std::clamp(ToLocalTime(time), kFirst, kLast);
}

std::string FormatCatalogueTime(LocalTime time) {
    const local_days midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss clock(time - midnight);
    return std::to_string(unsigned(date.month())) + '/' + std::to_string(unsigned(date.day())) + '/' +
           std::to_string(int(date.year())) + ' ' + std::to_string(make12(clock.hours()).count()) + ':' +
           TwoDigits(clock.minutes().count()) + ':' + TwoDigits(clock.seconds().count()) +
           (is_am(clock.hours()) ? " AM" : " PM");
}

std::optional<LocalTime> ParseCatalogueTime(std::string_view text) {
    TimeReader reader(text);
    const auto date = ReadDate(reader);
    if (!date) return std::nullopt;
    reader.SkipBlanks();
    if (reader.AtEnd()) return LocalTime(*date);
    const auto timeOfDay = ReadTimeOfDay(reader);
    if (!timeOfDay || !reader.AtEnd()) return std::nullopt;
    return *date + *timeOfDay;
}

} // namespace quillbay
