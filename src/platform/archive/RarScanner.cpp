#include "platform/archive/RarScanner.h"

#include "platform/Archive.h"
#include "platform/archive/ByteReader.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kOldBegin("Rar!\x1A\x07\x00", 7);
constexpr std::string_view kNewBegin("Rar!\x1A\x07\x01\x00", 8);
/// No real archive has more blocks in a row that are no entries.
constexpr int kMostOtherBlocks = 10'000;
constexpr std::size_t kUsualHeader = 512;
constexpr std::size_t kLongestHeader = std::size_t{2} << 20;

/// Whether the records behind a file's name say that it is encrypted.
bool HasEncryptionRecord(ByteReader records) {
    constexpr std::uint64_t kEncryption = 1;
    while (!records.AtEnd()) {
        ByteReader record(records.Take(records.Variable()));
        if (record.Variable() == kEncryption) return true;
    }
    return false;
}

} // namespace

RarScanner::RarScanner(const FileSystem& files, std::string_view file) : files_(files), file_(file) {
    const std::string begin = Bytes(kNewBegin.size());
    if (begin.starts_with(kOldBegin)) {
        format_ = Format::Old;
        at_ = kOldBegin.size();
    } else if (begin == kNewBegin) {
        format_ = Format::New;
        at_ = kNewBegin.size();
    }
}

Result<std::optional<std::uint32_t>> RarScanner::NextSum() {
    for (int others = 0; IsRar() && others < kMostOtherBlocks; ++others) {
        const Block block = format_ == Format::Old ? ReadOldBlock() : ReadNewBlock();
        if (block.refusal) return block.refusal;
        if (block.size == 0) break;
        at_ += block.size;
        if (block.isEntry) return block.sum;
    }
    return std::optional<std::uint32_t>();
}

RarScanner::Block RarScanner::ReadOldBlock() const {
    constexpr std::uint64_t kMain = 0x73, kFile = 0x74, kEnd = 0x7B;
    constexpr std::uint64_t kVolume = 0x0001, kPassword = 0x0004, kHidden = 0x0080, kLarge = 0x0100,
                            kHasData = 0x8000;
    constexpr std::size_t kHeader = 40; ///< bytes up to the high half of a large file's size
    const std::string header = Bytes(kHeader);
    ByteReader bytes(header);
    bytes.Take(2); // checksum
    const std::uint64_t type = bytes.Fixed(1);
    const std::uint64_t flags = bytes.Fixed(2);
    Block block;
    block.size = bytes.Fixed(2);
    if (block.size < 7 || type == kEnd) return {};
    if (type == kMain && (flags & kVolume)) block.refusal = ArchiveError::PartOfSet;
    if (type == kMain && (flags & kHidden)) block.refusal = ArchiveError::Encrypted;
    std::uint64_t data = flags & kHasData ? bytes.Fixed(4) : 0;
    if (type == kFile) {
        if (flags & kPassword) block.refusal = ArchiveError::Encrypted;
        block.isEntry = true;
        bytes.Take(5); // size, system
        block.sum = static_cast<std::uint32_t>(bytes.Fixed(4));
        bytes.Take(12); // time, version, method, length of the name, attributes
        if (flags & kLarge) data |= bytes.Fixed(4) << 32;
    }
    block.size += data;
    return block;
}

RarScanner::Block RarScanner::ReadNewBlock() const {
    constexpr std::uint64_t kMain = 1, kFile = 2, kService = 3, kEncryption = 4, kEnd = 5;
    constexpr std::uint64_t kHasRecords = 0x1, kHasData = 0x2, kVolume = 0x1, kHasTime = 0x2, kHasSum = 0x4;
    constexpr std::size_t kSum = 4; ///< bytes of the header's own checksum
    std::string bytes = Bytes(kUsualHeader);
    ByteReader head(bytes);
    head.Take(kSum);
    const std::uint64_t headerSize = head.Variable();
    if (headerSize == 0 || headerSize > kLongestHeader) return {};
    const std::size_t begin = bytes.size() - head.Left();
    const auto end = begin + static_cast<std::size_t>(headerSize);
    if (end > bytes.size()) bytes = Bytes(end);
    const auto header = std::string_view(bytes).substr(begin, static_cast<std::size_t>(headerSize));

    ByteReader fields(header);
    const std::uint64_t type = fields.Variable();
    const std::uint64_t flags = fields.Variable();
    const std::uint64_t recordBytes = flags & kHasRecords ? fields.Variable() : 0;
    const std::uint64_t dataBytes = flags & kHasData ? fields.Variable() : 0;
    if (type == kEnd) return {};
    Block block;
    block.size = end + dataBytes;
    block.isEntry = type == kFile;
    if (type == kEncryption) block.refusal = ArchiveError::Encrypted;
    if (type == kMain && (fields.Variable() & kVolume)) block.refusal = ArchiveError::PartOfSet;
    if (type != kFile && type != kService) return block;

    const std::uint64_t fileFlags = fields.Variable();
    fields.Variable(); // size
    fields.Variable(); // attributes
    if (fileFlags & kHasTime) fields.Take(4);
    if (fileFlags & kHasSum) block.sum = static_cast<std::uint32_t>(fields.Fixed(4));
    const auto records =
        header.size() - static_cast<std::size_t>(std::min<std::uint64_t>(recordBytes, header.size()));
    if (HasEncryptionRecord(ByteReader(header.substr(records)))) block.refusal = ArchiveError::Encrypted;
    return block;
}

} // namespace quillbay
