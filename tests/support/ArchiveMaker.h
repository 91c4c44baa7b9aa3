#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbay::test {

enum class Packing { Zip, EncryptedZip, SevenZip, Tar, TarGz, TarBz2, TarXz };

/// The bytes of an archive. `contents` is as in TempFolder::Put: "empty/ sub/file=bytes"; with more kinds of
/// entries for those formats that have them: "link->text", "hard=>file", "pipe|". Files are of the time
/// kPackedTime, those whose names end in ".sh" may be run.
std::string Pack(Packing packing, std::string_view contents);
inline constexpr std::int64_t kPackedTime = 930'000'002;

/// What a rar says of itself, rightly or not.
struct RarMarks {
    bool isVolume = false;
    bool isEncrypted = false;    ///< its files
    bool hasHiddenNames = false; ///< encrypted too; the new format only
    std::uint32_t missing = 0;   ///< bytes that are declared and do not come; the new format only
};

/// One of the two rar formats, nothing compressed; files only.
std::string PackRar4(std::string_view contents, RarMarks marks = {});
std::string PackRar5(std::string_view contents, RarMarks marks = {});

} // namespace quillbay::test
