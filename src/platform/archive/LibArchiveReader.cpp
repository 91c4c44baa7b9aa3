#include "platform/Archive.h"
#include "platform/PathText.h"
#include "platform/archive/Crc32.h"
#include "platform/archive/EntryName.h"
#include "platform/archive/EntryPath.h"
#include "platform/archive/PartOfSet.h"
#include "platform/archive/RarScanner.h"
#include "platform/archive/ZipEnd.h"
#include "platform/archive/ZipNames.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

namespace quillbay {

namespace {

constexpr std::size_t kBlock = 256 * 1024;
constexpr std::size_t kZeros = 64 * 1024;
constexpr std::uint64_t kEmptyArchive = 32; ///< bytes, of a 7z or rar without entries at most

/// What the library reads, by way of the file system.
struct Source {
    const FileSystem& files;
    std::string file;
    std::uint64_t size = 0;
    std::uint64_t position = 0;
    std::string block;
    std::error_code error; ///< of the file system
};

la_ssize_t ReadSource(archive*, void* data, const void** bytes) {
    auto& source = *static_cast<Source*>(data);
    auto block = source.files.Read(source.file, source.position, kBlock);
    source.error = block.Error();
    if (!block) return ARCHIVE_FATAL;
    source.block = std::move(*block);
    source.position += source.block.size();
    *bytes = source.block.data();
    return static_cast<la_ssize_t>(source.block.size());
}

la_int64_t SkipSource(archive*, void* data, la_int64_t count) {
    auto& source = *static_cast<Source*>(data);
    const auto skipped = std::min(static_cast<std::uint64_t>(std::max<la_int64_t>(count, 0)),
                                  source.size - std::min(source.position, source.size));
    source.position += skipped;
    return static_cast<la_int64_t>(skipped);
}

la_int64_t SeekSource(archive*, void* data, la_int64_t offset, int whence) {
    auto& source = *static_cast<Source*>(data);
    const std::uint64_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? source.position : source.size;
    const la_int64_t to = static_cast<la_int64_t>(from) + offset;
    if (to < 0) return ARCHIVE_FATAL;
    source.position = static_cast<std::uint64_t>(to);
    return to;
}

/// Lives around every call of the library that may convert a name.
struct LibraryCall {
    /// Where a name cannot be converted the library looks at errno, and ends the program when that happens to
    /// speak of memory.
    LibraryCall() { errno = 0; }

    Utf8Names utf8;
};

EntryKind KindOf(archive_entry* entry) {
    if (archive_entry_hardlink(entry)) return EntryKind::Other;
    switch (archive_entry_filetype(entry)) {
    case AE_IFREG:
        return EntryKind::File;
    case AE_IFDIR:
        return EntryKind::Folder;
    default:
        return EntryKind::Other;
    }
}

class LibArchiveReader : public ArchiveReader {
public:
    LibArchiveReader(const FileSystem& files, std::string_view file, std::uint64_t size)
        : source_{files, std::string(file), size, 0, {}, {}}, archive_(archive_read_new(), archive_read_free),
          rar_(files, file) {}

    std::error_code Open() {
        const LibraryCall call;
        archive* const a = archive_.get();
        if (!a) return std::make_error_code(std::errc::not_enough_memory);
        // Enabled by name, so that other formats that the library may have been built with stay out.
        for (const auto support : {archive_read_support_format_zip, archive_read_support_format_7zip,
                                   archive_read_support_format_rar, archive_read_support_format_rar5,
                                   archive_read_support_format_tar, archive_read_support_filter_gzip,
                                   archive_read_support_filter_bzip2, archive_read_support_filter_xz})
            if (support(a) < ARCHIVE_WARN) return Failure();
        // Without these the library would take the names in the character set of this computer's user.
        archive_read_set_format_option(a, "zip", "hdrcharset", "CP437");
        archive_read_set_format_option(a, "rar", "hdrcharset", "CP437");
        archive_read_set_format_option(a, "tar", "hdrcharset", "UTF-8");
        archive_read_set_callback_data(a, &source_);
        archive_read_set_read_callback(a, ReadSource);
        archive_read_set_skip_callback(a, SkipSource);
        archive_read_set_seek_callback(a, SeekSource);
        return archive_read_open1(a) == ARCHIVE_OK ? std::error_code() : Failure();
    }

    Result<std::optional<ArchiveEntry>> Next() override {
        const LibraryCall call;
        held_ = {};
        given_ = 0;
        sum_ = {};
        const auto declared = rar_.NextSum();
        if (!declared) return declared.Error();
        declaredSum_ = *declared;
        archive_entry* entry = nullptr;
        const int result = archive_read_next_header(archive_.get(), &entry);
        if (result == ARCHIVE_EOF) return End();
        // A warning concerns a name or an attribute only; whoever uses this reader counts the bytes.
        if (result != ARCHIVE_OK && result != ARCHIVE_WARN) return Failure();
        const std::uint64_t number = entries_++;
        if (archive_entry_is_encrypted(entry)) return make_error_code(ArchiveError::Encrypted);

        ArchiveEntry next;
        const int format = Format();
        if (auto path = EntryPath(entry))
            next.name = EntryNameText(*path, format == ARCHIVE_FORMAT_ZIP || format == ARCHIVE_FORMAT_RAR);
        if (format == ARCHIVE_FORMAT_ZIP && !IsPacked()) {
            if (number == 0) zipNames_.emplace(source_.files, source_.file, source_.size);
            if (const auto name = zipNames_->Find(number); !name.empty()) next.name = name;
        }
        next.kind = KindOf(entry);
        if (archive_entry_size_is_set(entry)) {
            const auto size = archive_entry_size(entry);
            if (size < 0) return make_error_code(ArchiveError::Broken);
            next.size = static_cast<std::uint64_t>(size);
        }
        if (archive_entry_mtime_is_set(entry))
            next.modified = FileTime(std::chrono::seconds(archive_entry_mtime(entry)));
        next.executable = (archive_entry_perm(entry) & 0111U) != 0;
        return std::optional(std::move(next));
    }

    Result<std::string_view> Read() override {
        while (held_.size == 0 && held_.offset <= given_) {
            const auto more = ReadBlock();
            if (!more) return more.Error();
            if (!*more) return EndOfEntry();
        }
        std::string_view bytes(held_.bytes, held_.size);
        if (held_.offset > given_) { // a gap of a sparse file reads as zeros
            static constexpr std::array<char, kZeros> zeros{};
            bytes = {zeros.data(),
                     static_cast<std::size_t>(std::min<std::uint64_t>(held_.offset - given_, zeros.size()))};
        } else {
            held_.size = 0;
        }
        given_ += bytes.size();
        if (declaredSum_) sum_.Add(bytes);
        return bytes;
    }

    std::uint64_t Done() const override {
        return std::min(
            static_cast<std::uint64_t>(std::max<la_int64_t>(archive_filter_bytes(archive_.get(), -1), 0)),
            source_.size);
    }
    std::uint64_t Total() const override { return source_.size; }

private:
    /// False at the end of the entry.
    Result<bool> ReadBlock() {
        const LibraryCall call;
        const void* bytes = nullptr;
        std::size_t size = 0;
        la_int64_t offset = static_cast<la_int64_t>(given_);
        const int result = archive_read_data_block(archive_.get(), &bytes, &size, &offset);
        const bool atEnd = result == ARCHIVE_EOF;
        if (result != ARCHIVE_OK && !atEnd) return Failure();
        // Only tar has sparse files, which may end with a gap. In another format the library reports a gap
        // when the data end too early.
        const bool isTar = Format() == ARCHIVE_FORMAT_TAR;
        const auto at = static_cast<std::uint64_t>(std::max<la_int64_t>(offset, 0));
        if (atEnd && (!isTar || at <= given_)) return false;
        if (at < given_ || (at > given_ && !isTar)) return make_error_code(ArchiveError::Broken);
        held_ = {static_cast<const char*>(bytes), atEnd ? 0 : size, at};
        return true;
    }

    int Format() const { return archive_format(archive_.get()) & ARCHIVE_FORMAT_BASE_MASK; }

    /// Whether the archive is compressed as a whole.
    bool IsPacked() const { return archive_filter_count(archive_.get()) > 1; }

    std::string Tail() const {
        const std::uint64_t at = source_.size - std::min<std::uint64_t>(source_.size, kLongestZipEnd);
        return source_.files.Read(source_.file, at, kLongestZipEnd).ValueOr({});
    }

    /// The end of the archive. Where the list of entries is damaged the library takes it for shorter than it
    /// is.
    Result<std::optional<ArchiveEntry>> End() const {
        if (Format() == ARCHIVE_FORMAT_ZIP && !IsPacked()) {
            const auto end = FindZipEnd(Tail());
            if (end && end->IsOfSet()) return make_error_code(ArchiveError::PartOfSet);
            if (!end || end->HasMoreThan(entries_)) return make_error_code(ArchiveError::Broken);
        } else if (Format() != ARCHIVE_FORMAT_TAR && entries_ == 0 && source_.size > kEmptyArchive) {
            return make_error_code(ArchiveError::Broken);
        }
        return std::optional<ArchiveEntry>();
    }

    Result<std::string_view> EndOfEntry() const {
        if (declaredSum_ && *declaredSum_ != sum_.Value()) return make_error_code(ArchiveError::Broken);
        return std::string_view();
    }

    std::error_code Failure() {
        archive* const a = archive_.get();
        if (source_.error) return source_.error;
        if (archive_errno(a) == ENOMEM) return std::make_error_code(std::errc::not_enough_memory);
        // The library crashes when it is asked before it knows the format.
        const bool isKnown = archive_format(a) != 0;
        // The library has positive error numbers for the system's errors and for an unknown format, and a
        // negative one for a compression that it knows and that ends too early.
        const bool isBroken = isKnown || archive_errno(a) < 0;
        if (isKnown && archive_read_has_encrypted_entries(a) > 0) return ArchiveError::Encrypted;
        if (LooksLikePart(LastComponent(source_.file), Tail())) return ArchiveError::PartOfSet;
        return isBroken ? ArchiveError::Broken : ArchiveError::Unknown;
    }

    /// Bytes of the library that are not given away yet.
    struct Block {
        const char* bytes = nullptr;
        std::size_t size = 0;
        std::uint64_t offset = 0; ///< in the entry
    };

    Source source_;
    std::unique_ptr<archive, int (*)(archive*)> archive_;
    Block held_;
    std::uint64_t given_ = 0;   ///< bytes of the entry
    std::uint64_t entries_ = 0; ///< so far
    RarScanner rar_;
    std::optional<ZipNames> zipNames_;
    std::optional<std::uint32_t> declaredSum_; ///< of the entry
    Crc32 sum_;                                ///< of what was given
};

} // namespace

Result<std::unique_ptr<ArchiveReader>> OpenArchive(const FileSystem& files, std::string_view file) {
    const auto info = files.Stat(file);
    if (!info) return info.Error();
    auto reader = std::make_unique<LibArchiveReader>(files, file, info->size);
    if (const auto error = reader->Open()) return error;
    return std::unique_ptr<ArchiveReader>(std::move(reader));
}

} // namespace quillbay
