#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quillbay {

inline constexpr std::array<std::uint32_t, 256> kCrcTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320U : 0U);
        table[byte] = crc;
    }
    return table;
}();

/// The checksum of archives, of bytes that come piece by piece.
class Crc32 {
public:
    void Add(std::string_view bytes) {
        for (const char byte : bytes)
            state_ = state_ >> 8 ^ kCrcTable[(state_ ^ static_cast<unsigned char>(byte)) & 0xFF];
    }
    std::uint32_t Value() const { return ~state_; }

private:
    std::uint32_t state_ = ~std::uint32_t{0};
};

} // namespace quillbay
