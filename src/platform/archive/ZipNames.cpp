#include "platform/archive/ZipNames.h"

#include "platform/archive/ByteReader.h"
#include "platform/archive/Crc32.h"
#include "platform/archive/EntryName.h"
#include "platform/archive/ZipEnd.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

/// A longer list is that of no mod.
constexpr std::uint64_t kLongestList = std::uint64_t{64} << 20;

/// The name among the records behind an entry's `name`; empty when there is none that is meant for it.
std::string_view FindUtf8Name(ByteReader records, std::string_view name) {
    constexpr std::uint64_t kUnicodePath = 0x7075;
    while (!records.AtEnd()) {
        const std::uint64_t kind = records.Fixed(2);
        ByteReader record(records.Take(records.Fixed(2)));
        if (kind != kUnicodePath || record.Fixed(1) != 1) continue;
        Crc32 sum;
        sum.Add(name);
        if (record.Fixed(4) != sum.Value()) return {};
        const auto found = record.Take(record.Left());
        return IsUtf8(found) ? found : std::string_view();
    }
    return {};
}

} // namespace

ZipNames::ZipNames(const FileSystem& files, std::string_view file, std::uint64_t size) {
    const std::uint64_t tailBytes = std::min<std::uint64_t>(size, kLongestZipEnd);
    const auto tail = files.Read(file, size - tailBytes, kLongestZipEnd).ValueOr({});
    const auto end = FindZipEnd(tail);
    if (!end) return;
    const std::uint64_t endAt = size - tailBytes + end->at;
    if (end->listBytes > std::min(endAt, kLongestList)) return;
    const auto list =
        files.Read(file, endAt - end->listBytes, static_cast<std::size_t>(end->listBytes)).ValueOr({});

    std::vector<std::pair<std::uint64_t, std::string_view>> entries; // by place, with the name found
    ByteReader bytes(list);
    while (bytes.Take(4) == "PK\x01\x02") {
        bytes.Take(24); // versions, flags, method, time, checksum, sizes
        const std::uint64_t nameBytes = bytes.Fixed(2);
        const std::uint64_t recordBytes = bytes.Fixed(2);
        const std::uint64_t commentBytes = bytes.Fixed(2);
        bytes.Take(8); // file of a set, attributes
        const std::uint64_t place = bytes.Fixed(4);
        const auto name = bytes.Take(nameBytes);
        entries.emplace_back(place, FindUtf8Name(ByteReader(bytes.Take(recordBytes)), name));
        bytes.Take(commentBytes);
    }
    std::ranges::sort(entries);
    // The library makes one entry of two with the same place, so that numbers say nothing then.
    if (std::ranges::adjacent_find(entries, {}, [](const auto& entry) { return entry.first; }) !=
        entries.end())
        return;
    for (std::size_t number = 0; number < entries.size(); ++number)
        if (!entries[number].second.empty()) names_.emplace(number, entries[number].second);
}

} // namespace quillbay
