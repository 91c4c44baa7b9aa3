#pragma once

#include "platform/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace quillbay {

/// Reads the headers of a rar, of either format, beside the unpacking library, which passes over what counts:
/// it gives a first part's bytes as far as they go, a protected file's as they are, and does not always
/// compare the checksum of a file with its bytes.
class RarScanner {
public:
    /// Any file may be given; what does not begin as a rar has nothing to tell. `files` must outlive it.
    RarScanner(const FileSystem& files, std::string_view file);

    bool IsRar() const { return format_ != Format::None; }
    /// Goes on to the next entry and gives its checksum, where it has one, and at the end nothing. PartOfSet
    /// and Encrypted where a header says so.
    Result<std::optional<std::uint32_t>> NextSum();

private:
    enum class Format { None, Old, New };
    /// What a header says.
    struct Block {
        std::uint64_t size = 0; ///< with the data behind it; 0 at the end of the archive
        bool isEntry = false;
        std::optional<std::uint32_t> sum;
        std::error_code refusal;
    };

    Block ReadOldBlock() const;
    Block ReadNewBlock() const;
    std::string Bytes(std::size_t count) const { return files_.Read(file_, at_, count).ValueOr({}); }

    const FileSystem& files_;
    std::string file_;
    Format format_ = Format::None;
    std::uint64_t at_ = 0; ///< the next header
};

} // namespace quillbay
