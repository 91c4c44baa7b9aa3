#include "platform/archive/ArchiveMarks.h"

#include "platform/Archive.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <cstdint>

namespace quillbay {

namespace {

using namespace std::string_view_literals;

constexpr auto kRar4 = "Rar!\x1A\x07\x00"sv;
constexpr auto kRar5 = "Rar!\x1A\x07\x01\x00"sv;
constexpr auto kZipEnd = "PK\x05\x06"sv;

/// Reads numbers until the bytes are at their end; from then on all are 0.
class Bytes {
public:
    explicit Bytes(std::string_view rest) : rest_(rest) {}

    bool AtEnd() const { return rest_.empty(); }
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

std::error_code FindRar4Mark(Bytes bytes) {
    constexpr std::uint64_t kMain = 0x73, kVolume = 0x0001;
    bytes.Take(2); // checksum
    const bool isMain = bytes.Fixed(1) == kMain;
    return isMain && (bytes.Fixed(2) & kVolume) ? ArchiveError::PartOfSet : std::error_code();
}

/// Whether the records behind a file's name say that it is encrypted.
bool HasEncryptionRecord(Bytes records) {
    constexpr std::uint64_t kEncryption = 1;
    while (!records.AtEnd()) {
        Bytes record(records.Take(records.Variable()));
        if (record.Variable() == kEncryption) return true;
    }
    return false;
}

/// Goes through the blocks up to the first file.
std::error_code FindRar5Mark(Bytes bytes) {
    enum : std::uint64_t { kMain = 1, kFile = 2, kService = 3, kEncryption = 4 };
    constexpr std::uint64_t kHasRecords = 0x1, kHasData = 0x2, kVolume = 0x1;
    while (!bytes.AtEnd()) {
        bytes.Take(4); // checksum
        const std::string_view header = bytes.Take(bytes.Variable());
        Bytes block(header);
        const std::uint64_t type = block.Variable();
        const std::uint64_t flags = block.Variable();
        const std::uint64_t recordBytes = flags & kHasRecords ? block.Variable() : 0;
        const std::uint64_t dataBytes = flags & kHasData ? block.Variable() : 0;
        if (type == kEncryption) return ArchiveError::Encrypted;
        if (type == kMain && (block.Variable() & kVolume)) return ArchiveError::PartOfSet;
        if (type == kFile || type == kService) {
            const auto at =
                header.size() - static_cast<std::size_t>(std::min<std::uint64_t>(recordBytes, header.size()));
            if (HasEncryptionRecord(Bytes(header.substr(at)))) return ArchiveError::Encrypted;
        }
        if (type == kFile) return {};
        bytes.Take(dataBytes);
    }
    return {};
}

bool IsDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::error_code FindRarMark(std::string_view head) {
    if (head.starts_with(kRar4)) return FindRar4Mark(Bytes(head.substr(kRar4.size())));
    if (head.starts_with(kRar5)) return FindRar5Mark(Bytes(head.substr(kRar5.size())));
    return {};
}

bool LooksLikePart(std::string_view fileName, std::string_view tail) {
    const auto end = tail.rfind(kZipEnd);
    // Behind the mark stands which file of the set this is, from 0.
    if (end != std::string_view::npos && Bytes(tail.substr(end + kZipEnd.size())).Fixed(2) != 0) return true;

    const auto dot = fileName.rfind('.');
    if (dot == std::string_view::npos) return false;
    const auto ending = fileName.substr(dot + 1);
    if (ending.size() == 3 && IsDigits(ending)) return true; // .7z.001
    if (ending.size() != 3) return false;
    const std::string folded = FoldCase(ending);
    if (IsDigits(ending.substr(1))) return folded[0] == 'R' || folded[0] == 'Z'; // .r00, .z01
    const auto name = fileName.substr(0, dot);
    const auto part = name.rfind('.');
    return folded == "RAR" && part != std::string_view::npos &&
           IsDigits(name.substr(std::min(part + 5, name.size()))) &&
           EqualFolded(name.substr(part + 1, 4), "part"); // .part2.rar
}

} // namespace quillbay
