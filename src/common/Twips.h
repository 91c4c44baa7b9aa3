#pragma once

namespace quillbay {

/// 1/1440 inch; 15 of them make a pixel at 96 dots per inch.
inline constexpr int kTwipsPerPixel = 15;

constexpr int TwipsToPixels(int twips) { return twips / kTwipsPerPixel; }

} // namespace quillbay
