#pragma once

#include "platform/archive/ByteReader.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillbay {

/// The record at the end of a zip.
struct ZipEnd {
    std::uint64_t file = 0;      ///< which file of a set this is, from 0
    std::uint64_t entries = 0;   ///< in the whole zip, modulo 65,536
    std::uint64_t listBytes = 0; ///< of the list of entries, which stands before this
    std::size_t at = 0;          ///< where in the tail it begins
    /// In place of either number: it stands in a longer record.
    static constexpr std::uint64_t kElsewhere = 0xFFFF;

    bool IsOfSet() const { return file != 0 && file != kElsewhere; }
    /// True when `read` entries are fewer than there are.
    bool HasMoreThan(std::uint64_t read) const {
        const auto missing = static_cast<std::uint16_t>(entries - read);
        return entries != kElsewhere && missing != 0 && missing < kElsewhere / 2;
    }
};

/// The longest record: its comment may take 65,535 bytes.
inline constexpr std::size_t kLongestZipEnd = 22 + 65'535;

/// None when the last bytes of a file, `tail`, hold no such record.
inline std::optional<ZipEnd> FindZipEnd(std::string_view tail) {
    constexpr std::string_view kMark = "PK\x05\x06";
    const auto at = tail.rfind(kMark);
    if (at == std::string_view::npos) return std::nullopt;
    ByteReader bytes(tail.substr(at + kMark.size()));
    ZipEnd end;
    end.file = bytes.Fixed(2);
    bytes.Take(4); // where the list of entries begins, and how many of them stand in this file
    end.entries = bytes.Fixed(2);
    end.listBytes = bytes.Fixed(4);
    end.at = at;
    return end;
}

} // namespace quillbay
