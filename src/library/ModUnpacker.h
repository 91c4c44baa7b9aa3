#pragma once

#include "library/ModLayout.h"
#include "library/StagedTree.h"
#include "platform/Archive.h"
#include "platform/FileSystem.h"

#include <cstdint>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

/// Out of an archive into a folder, whatever the archive holds.
namespace quillbay {

enum class IntakeProblem {
    None,
    Stopped,       ///< by the user
    Unreadable,    ///< `error` says why
    Unwritable,    ///< the same
    NoRoom,        ///< too little of the disk would be left
    TooLarge,      ///< more bytes or entries than any mod has
    LeadsOut,      ///< a name that leads out of the folder that it is unpacked into
    Empty,         ///< no file that belongs to a mod
    InsideLibrary, ///< the folder is, holds or lies in `mods`
};

struct IntakeFailure {
    IntakeProblem problem = IntakeProblem::None;
    std::error_code error;
    std::string path; ///< what it is about; may be empty

    explicit operator bool() const { return problem != IntakeProblem::None; }
};

struct IntakeLimits {
    std::uint64_t bytes = std::uint64_t{8} << 30;
    std::size_t entries = 200'000;
    std::uint64_t leastLeft = 200'000'000; ///< bytes of the disk that stay free
    unsigned leastPercentLeft = 5;         ///< of the disk
};

/// How far it is, in bytes of the source; the user stops it with false. It may be called very often.
using IntakeProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

struct UnpackResult {
    IntakeFailure failure; ///< then what has been unpacked is of no use
    StagedTree tree;
    std::vector<LeftOut> leftOut;
};

/// Unpacks everything in one pass into `folder`, which is empty, under the names that it has, those that
/// differ in letter case only as one. Every entry's bytes are counted against what is declared of it.
UnpackResult Unpack(FileSystem& files, ArchiveReader& source, const std::string& folder,
                    const IntakeLimits& limits, const IntakeProgress& progress);

} // namespace quillbay
