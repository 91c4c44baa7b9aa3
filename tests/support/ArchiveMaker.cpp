#include "support/ArchiveMaker.h"

#include "platform/archive/EntryPath.h"

#include <archive.h>
#include <archive_entry.h>
#include <sstream>
#include <stdexcept>

namespace quillbay::test {

namespace {

struct Packed {
    std::string name;
    std::string bytes; ///< or what a link leads to
    char kind = '=';   ///< '=' file, '/' folder, '-' link, '>' hard link, '|' pipe
};

void ForEachPacked(std::string_view contents, const std::function<void(const Packed&)>& use) {
    std::istringstream stream{std::string(contents)};
    for (std::string text; stream >> text;) {
        const auto at = std::min(text.find_first_of("=-|"), text.size());
        if (at == text.size() || text[at] == '|') {
            use({text.substr(0, text.size() - 1), {}, text.back()});
        } else if (text.substr(at, 2) == "=>" || text.substr(at, 2) == "->") {
            use({text.substr(0, at), text.substr(at + 2), text[at] == '=' ? '>' : '-'});
        } else {
            use({text.substr(0, at), text.substr(at + 1), '='});
        }
    }
}

void Check(archive* made, int result) {
    if (result != ARCHIVE_OK) throw std::runtime_error(archive_error_string(made));
}

la_ssize_t Append(archive*, void* bytes, const void* more, std::size_t size) {
    static_cast<std::string*>(bytes)->append(static_cast<const char*>(more), size);
    return static_cast<la_ssize_t>(size);
}

void Choose(archive* made, Packing packing) {
    if (packing == Packing::Zip || packing == Packing::EncryptedZip) {
        Check(made, archive_write_set_format_zip(made));
        if (packing == Packing::Zip) return;
        Check(made, archive_write_set_options(made, "zip:encryption=zipcrypt"));
        Check(made, archive_write_set_passphrase(made, "secret"));
    } else if (packing == Packing::SevenZip) {
        Check(made, archive_write_set_format_7zip(made));
    } else {
        Check(made, archive_write_set_format_pax_restricted(made));
        if (packing == Packing::TarGz) Check(made, archive_write_add_filter_gzip(made));
        if (packing == Packing::TarBz2) Check(made, archive_write_add_filter_bzip2(made));
        if (packing == Packing::TarXz) Check(made, archive_write_add_filter_xz(made));
    }
}

void Describe(archive_entry* entry, const Packed& packed) {
    archive_entry_set_pathname(entry, packed.name.c_str());
    archive_entry_set_mtime(entry, kPackedTime, 0);
    archive_entry_set_perm(entry, packed.name.ends_with(".sh") ? 0755 : 0644);
    archive_entry_set_filetype(entry, packed.kind == '/'   ? AE_IFDIR
                                      : packed.kind == '-' ? AE_IFLNK
                                      : packed.kind == '|' ? AE_IFIFO
                                                           : AE_IFREG);
    if (packed.kind == '-') archive_entry_set_symlink(entry, packed.bytes.c_str());
    if (packed.kind == '>') archive_entry_set_hardlink(entry, packed.bytes.c_str());
    if (packed.kind == '=') archive_entry_set_size(entry, static_cast<la_int64_t>(packed.bytes.size()));
}

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

/// Little endian.
std::string Fixed(std::uint64_t value, int size) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

std::string Variable(std::uint64_t value) {
    std::string bytes;
    for (; value >= 0x80; value >>= 7)
        bytes += static_cast<char>((value & 0x7F) | 0x80);
    return bytes + static_cast<char>(value);
}

/// A block of the older format: kind, flags, the rest.
std::string Block4(int kind, int flags, const std::string& rest, std::string_view data = {}) {
    const std::string block = Fixed(static_cast<std::uint64_t>(kind), 1) +
                              Fixed(static_cast<std::uint64_t>(flags), 2) + Fixed(7 + rest.size(), 2) + rest;
    return Fixed(Crc32(block), 2) + block + std::string(data);
}

std::string Block5(const std::string& rest, std::string_view data = {}) {
    const std::string block = Variable(rest.size()) + rest;
    return Fixed(Crc32(block), 4) + block + std::string(data);
}

} // namespace

std::string Pack(Packing packing, std::string_view contents) {
    const Utf8Names utf8;
    const std::unique_ptr<archive, int (*)(archive*)> made(archive_write_new(), archive_write_free);
    const std::unique_ptr<archive_entry, void (*)(archive_entry*)> entry(archive_entry_new(),
                                                                         archive_entry_free);
    std::string bytes;
    Choose(made.get(), packing);
    Check(made.get(), archive_write_set_bytes_in_last_block(made.get(), 1));
    Check(made.get(), archive_write_open(made.get(), &bytes, nullptr, Append, nullptr));
    ForEachPacked(contents, [&](const Packed& packed) {
        archive_entry_clear(entry.get());
        Describe(entry.get(), packed);
        Check(made.get(), archive_write_header(made.get(), entry.get()));
        if (packed.kind == '=') archive_write_data(made.get(), packed.bytes.data(), packed.bytes.size());
    });
    Check(made.get(), archive_write_close(made.get()));
    return bytes;
}

std::string PackRar4(std::string_view contents, RarMarks marks) {
    using namespace std::string_literals;
    std::string bytes = "Rar!\x1A\x07\0"s + Block4(0x73, marks.isVolume ? 1 : 0, std::string(6, '\0'));
    ForEachPacked(contents, [&](const Packed& packed) {
        const auto& [name, data, kind] = packed;
        bytes += Block4(0x74, 0x8000 | (marks.isEncrypted ? 4 : 0),
                        Fixed(data.size(), 4) + Fixed(data.size(), 4) + '\x03' + Fixed(Crc32(data), 4) +
                            Fixed(0, 4) + '\x14' + '\x30' + Fixed(name.size(), 2) + Fixed(0100644, 4) + name,
                        data);
    });
    return bytes + Block4(0x7B, 0x4000, {});
}

std::string PackRar5(std::string_view contents, RarMarks marks) {
    using namespace std::string_literals;
    std::string bytes = "Rar!\x1A\x07\x01\0"s;
    if (marks.hasHiddenNames)
        return bytes + Block5(Variable(4) + Variable(0) + std::string(20, '\0')) + "noise";
    bytes += Block5(Variable(1) + Variable(0) + Variable(marks.isVolume ? 1 : 0));
    // A record of the kind 1 in front of one of another kind.
    const std::string records = marks.isEncrypted ? "\x02\x07x\x03\x01xx"s : ""s;
    ForEachPacked(contents, [&](const Packed& packed) {
        const auto& [name, data, kind] = packed;
        bytes += Block5(Variable(2) + Variable(records.empty() ? 2 : 3) +
                            (records.empty() ? ""s : Variable(records.size())) + Variable(data.size()) +
                            Variable(4) + Variable(data.size() + marks.missing) + Variable(0100644) +
                            Fixed(Crc32(data), 4) + Variable(0) + Variable(1) + Variable(name.size()) + name +
                            records,
                        data);
    });
    return bytes + Block5(Variable(5) + Variable(0) + Variable(0));
}

} // namespace quillbay::test
