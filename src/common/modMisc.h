#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Small text and number routines that several subsystems share.
namespace quillbay {

/// True when `part` occurs in `text`, letter case ignored (as in file look-ups). An empty part occurs
/// everywhere.
bool ContainsText(std::string_view text, std::string_view part);

/// `text` without the blanks at both ends.
std::string_view TrimBlanks(std::string_view text);

/// Rounds half up: the largest whole number not above value x 10^digits + 0.5, divided by 10^digits.
double RoundToDigits(double value, int digits);

/// The number that `text` begins with: sign, digits, a point and decimals, an exponent ("1.5e3"). Blanks and
/// tabs are passed over wherever they stand, reading stops at the first character that cannot continue a
/// number. 0 when no number stands there. A number too large for a double is infinite, one too small is 0:
/// check the range before converting.
double ParseLeadingNumber(std::string_view text);

/// `text` cut to at most `maxCharacters` characters of UTF-8; never cuts inside a character.
std::string_view CutText(std::string_view text, std::size_t maxCharacters);

/// A file size as the details panel words it, without the caption: up to 100 KB in kilobytes of 1024 bytes,
/// above that in thousands of such kilobytes; two decimals at most, no trailing zeros.
/// `decimalMark` is the user's own (UTF-8). For example "56.3 KB", "5.12 MB".
std::string FormatSize(unsigned long long bytes, std::string_view decimalMark);

} // namespace quillbay
