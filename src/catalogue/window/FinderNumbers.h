#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

/// How the finder's labels write numbers.
namespace quillbay {

/// Whole, with the user's separators.
QString Grouped(double number);
QString Grouped(std::size_t number);

/// Digits in groups of three with the user's separator; zero is empty.
QString Masked(std::uint64_t number);

} // namespace quillbay
