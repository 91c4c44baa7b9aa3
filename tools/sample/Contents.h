#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Made-up files that look like those of a game. The same seed gives the same bytes on every computer.
namespace quillbay::sample {

/// A small generator of numbers (splitmix64).
class Dice {
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next();
    /// A number from `low` to `high`, both included.
    std::uint64_t Between(std::uint64_t low, std::uint64_t high) { return low + Next() % (high - low + 1); }

private:
    std::uint64_t state_;
};

/// An object definition of about `bytes` bytes: comments, then `name = value` lines with CR LF.
std::string OdfText(std::string_view name, std::size_t bytes, std::uint64_t seed);

/// A 24-bit Windows bitmap: a night sky with stars over a coloured haze.
std::string SkyBitmap(int width, int height, std::uint64_t seed);

/// Bytes without any order.
std::string Noise(std::size_t bytes, std::uint64_t seed);

/// What a file of that name would hold, by its extension (`.odf` text, `.bmp` picture, else noise).
std::string ContentsFor(std::string_view fileName, std::size_t bytes, std::uint64_t seed);

} // namespace quillbay::sample
