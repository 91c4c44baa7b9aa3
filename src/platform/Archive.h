#pragma once

#include "platform/FileSystem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// Reading an archive in one pass, as that of a solid one costs a whole decompression.
namespace quillbay {

/// Why an archive cannot be read; beside the errors of the file system.
enum class ArchiveError {
    Unknown = 1, ///< no archive, or none of a format that is read here
    Broken,      ///< damaged, cut off, or packed by a method that is not known here
    Encrypted,
    PartOfSet, ///< one of several files that only together are an archive
};
std::error_code make_error_code(ArchiveError error);

struct ArchiveEntry {
    std::string name; ///< as the archive has it, whatever it leads to; empty when it is no text
    EntryKind kind = EntryKind::File;  ///< Other for a link too
    std::optional<std::uint64_t> size; ///< bytes, as declared
    std::optional<FileTime> modified;
    bool executable = false;
};

class ArchiveReader {
public:
    virtual ~ArchiveReader() = default;
    /// Goes on to the next entry; nothing after the last one. After a failure the reader is of no more use.
    [[nodiscard]] virtual Result<std::optional<ArchiveEntry>> Next() = 0;
    /// The next bytes of the entry, valid until the next call; empty at its end.
    [[nodiscard]] virtual Result<std::string_view> Read() = 0;
    /// How far it is, in bytes of what is read.
    virtual std::uint64_t Done() const = 0;
    virtual std::uint64_t Total() const = 0;
};

/// Opens a zip, 7z, rar or tar (also compressed by gzip, bzip2 or xz). `files` must outlive the reader.
Result<std::unique_ptr<ArchiveReader>> OpenArchive(const FileSystem& files, std::string_view file);
/// OpenArchive, for those who do not link the library behind it.
using ArchiveOpener = Result<std::unique_ptr<ArchiveReader>> (*)(const FileSystem& files,
                                                                 std::string_view file);

} // namespace quillbay

template <>
struct std::is_error_code_enum<quillbay::ArchiveError> : std::true_type {};
