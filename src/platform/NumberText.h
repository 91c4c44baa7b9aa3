#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

/// Numbers as files write them, whatever the user's language.
namespace quillbay {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// True when `text` is one or more digits.
constexpr bool IsDigits(std::string_view text) { return !text.empty() && std::ranges::all_of(text, IsDigit); }

/// The number that the whole of `text` is, with a minus where the type allows one; none when it is anything
/// else or too large for the type.
template <typename Number>
std::optional<Number> ParseNumber(std::string_view text, int base = 10) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

} // namespace quillbay
