#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillbay {

/// Reads numbers until the bytes are at their end; from then on all are 0.
class ByteReader {
public:
    explicit ByteReader(std::string_view rest) : rest_(rest) {}

    bool AtEnd() const { return rest_.empty(); }
    std::size_t Left() const { return rest_.size(); }
    std::string_view Take(std::uint64_t count) {
        const auto taken =
            rest_.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(count, rest_.size())));
        rest_.remove_prefix(taken.size());
        return taken;
    }
    /// Little endian.
    std::uint64_t Fixed(std::size_t size) {
        const auto bytes = Take(size);
        std::uint64_t value = 0;
        for (std::size_t i = bytes.size(); i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes[i]);
        return value;
    }
    /// Seven bits a byte, the last byte without the eighth.
    std::uint64_t Variable() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64 && !AtEnd(); shift += 7) {
            const std::uint64_t byte = Fixed(1);
            value |= (byte & 0x7F) << shift;
            if (byte < 0x80) break;
        }
        return value;
    }

private:
    std::string_view rest_;
};

} // namespace quillbay
