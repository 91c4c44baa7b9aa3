#include "common/modMisc.h"

#include "platform/CaseFold.h"
#include "platform/NumberText.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace quillbay {

namespace {

/// Reads a number's characters one by one, passing over blanks wherever they stand.
class NumberReader {
public:
    explicit NumberReader(std::string_view text) : rest_(text) { SkipBlanks(); }

    char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }
    char Take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        SkipBlanks();
        return c;
    }
    std::string TakeDigits() {
        std::string digits;
        while (IsDigit(Peek()))
            digits.push_back(Take());
        return digits;
    }
    std::string TakeSign() { return Peek() == '-' || Peek() == '+' ? std::string(1, Take()) : std::string(); }

private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    std::string_view rest_;
};

/// The decimal exponent of the first digit that counts, give or take one; -1 and less for a value below 1.
long long Magnitude(std::string_view whole, std::string_view fraction, std::string_view exponent) {
    long long magnitude = 0;
    const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        magnitude =
            exponent.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    const auto firstWhole = whole.find_first_not_of('0');
    if (firstWhole != std::string_view::npos) {
        return magnitude + static_cast<long long>(whole.size() - firstWhole);
    }
    return magnitude - 1 - static_cast<long long>(std::min(fraction.find_first_not_of('0'), fraction.size()));
}

} // namespace

bool ContainsText(std::string_view text, std::string_view part) {
    return FoldCase(text).find(FoldCase(part)) != std::string::npos;
}

std::string_view TrimBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

double RoundToDigits(double value, int digits) {
    const double scale = std::pow(10.0, digits);
    return std::floor(value * scale + 0.5) / scale;
}

double ParseLeadingNumber(std::string_view text) {
    NumberReader reader(text);
    const bool negative = reader.TakeSign() == "-";
    const std::string whole = reader.TakeDigits();
    std::string fraction;
    if (reader.Peek() == '.') {
        reader.Take();
        fraction = reader.TakeDigits();
    }
    if (whole.empty() && fraction.empty()) return 0;
    std::string exponent = "0";
    if (reader.Peek() == 'e' || reader.Peek() == 'E') {
        reader.Take();
        const std::string sign = reader.TakeSign();
        const std::string digits = reader.TakeDigits();
        if (!digits.empty()) exponent = (sign == "-" ? sign : "") + digits;
    }

    const std::string number = "0" + whole + "." + fraction + "0e" + exponent;
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        value = Magnitude(whole, fraction, exponent) > 0 ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -value : value;
}

std::string_view CutText(std::string_view text, std::size_t maxCharacters) {
    std::size_t at = 0;
    for (std::size_t count = 0; count < maxCharacters && at < text.size(); ++count) {
        at += ReadUtf8(text, at).length;
    }
    return text.substr(0, at);
}

std::string FormatSize(unsigned long long bytes, std::string_view decimalMark) {
    const double kilobytes = static_cast<double>(bytes) / 1024;
    const bool small = kilobytes <= 100;
    const double figure = RoundToDigits(small ? kilobytes : kilobytes / 1000, 2);
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), figure, std::chars_format::fixed);
    std::string text(digits.data(), end.ptr);
    if (const auto point = text.find('.'); point != std::string::npos) text.replace(point, 1, decimalMark);
    return text + (small ? " KB" : " MB");
}

} // namespace quillbay
