#include "sample/Contents.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbay::sample {

namespace {

constexpr std::array<std::string_view, 12> kProperties = {
    "maxHealth",   "buildTime",   "shieldRate", "turnRate",      "crewCost",     "rangeScan",
    "mineralCost", "weaponDelay", "maxSpeed",   "specialEnergy", "repairFactor", "hitChance",
};

void AppendNumber(std::string& to, std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        to += static_cast<char>(number >> (8 * i) & 0xFF);
    }
}

char Shade(double value) {
    return static_cast<char>(static_cast<unsigned char>(std::clamp(value, 0.0, 255.0)));
}

} // namespace

std::uint64_t Dice::Next() {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
    return mixed ^ mixed >> 31;
}

std::string OdfText(std::string_view name, std::size_t bytes, std::uint64_t seed) {
    Dice dice(seed);
    std::string text = "//------------------------------\r\n// " + std::string(name) +
                       "\r\n//------------------------------\r\nunitName = \"" + std::string(name) + "\"\r\n";
    while (text.size() < bytes) {
        text += kProperties[dice.Next() % kProperties.size()];
        text +=
            " = " + std::to_string(dice.Between(1, 5000)) + "." + std::to_string(dice.Next() % 10) + "\r\n";
    }
    return text;
}

std::string SkyBitmap(int width, int height, std::uint64_t seed) {
    constexpr std::uint32_t kHeaders = 54;
    const auto stride = static_cast<std::uint32_t>((width * 3 + 3) / 4 * 4);
    const std::uint32_t pixels = stride * static_cast<std::uint32_t>(height);
    std::string bitmap = "BM";
    bitmap.reserve(kHeaders + pixels);
    for (const std::uint32_t field : {kHeaders + pixels, 0U, kHeaders, 40U, static_cast<std::uint32_t>(width),
                                      static_cast<std::uint32_t>(height)}) {
        AppendNumber(bitmap, field, 4);
    }
    AppendNumber(bitmap, 1, 2);  // planes
    AppendNumber(bitmap, 24, 2); // bits a pixel
    for (const std::uint32_t field : {0U, pixels, 2835U, 2835U, 0U, 0U}) {
        AppendNumber(bitmap, field, 4);
    }
    Dice dice(seed);
    const double hue = static_cast<double>(dice.Between(0, 628)) / 100;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double haze = 60 + 50 * std::sin(hue + x / 70.0 + std::sin(y / 25.0)) * std::cos(y / 40.0);
            const double star = dice.Next() % 150 == 0 ? 160 : 0;
            bitmap += Shade(haze + 30 + star);
            bitmap += Shade(haze * (0.5 + 0.4 * std::sin(hue)) + star);
            bitmap += Shade(haze * (0.5 + 0.4 * std::cos(hue)) + star);
        }
        bitmap.append(stride - static_cast<std::uint32_t>(width) * 3, '\0');
    }
    return bitmap;
}

std::string Noise(std::size_t bytes, std::uint64_t seed) {
    Dice dice(seed);
    std::string noise;
    noise.reserve(bytes + 8);
    while (noise.size() < bytes) {
        AppendNumber(noise, static_cast<std::uint32_t>(dice.Next()), 4);
    }
    noise.resize(bytes);
    return noise;
}

std::string ContentsFor(std::string_view fileName, std::size_t bytes, std::uint64_t seed) {
    if (fileName.ends_with(".odf")) {
        return OdfText(fileName.substr(0, fileName.size() - 4), bytes, seed);
    }
    if (fileName.ends_with(".bmp")) {
        const int side = std::max(4, static_cast<int>(std::sqrt(static_cast<double>(bytes) / 3)));
        return SkyBitmap(side, side, seed);
    }
    return Noise(bytes, seed);
}

} // namespace quillbay::sample
