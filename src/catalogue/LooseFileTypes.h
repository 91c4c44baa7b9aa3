#pragma once

#include "odf/OdfIncludes.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Which loose files of a mod belong into which of the game's folders.
namespace quillbay {

/// What the type of a file is told by.
struct LooseFile {
    std::string_view name;
    OdfClasses odfClasses; ///< of an ODF file
    bool hasOdf = false;   ///< an ODF file of the same base name lies beside it
};

struct LooseFileType {
    std::string_view name; ///< the text of its row; in lower case the key of its help
    std::array<std::string_view, 2> endings;
    bool (*furtherTest)(const LooseFile& file); ///< null: the ending is enough
    std::string_view destination;               ///< an entry of GameFolders, in the mod
    std::string_view filesIncluded;
    std::string_view copiedTo;
    bool isOffered = true;
    bool needsOdf = false; ///< see LooseFile::hasOdf

    /// A name of three characters or fewer has no ending.
    bool Matches(const LooseFile& file) const;
};

inline constexpr std::size_t kLooseFileTypeCount = 19;

/// In the order of the rows. A file can belong to several of the ODF types, to one of the others at most.
extern const std::array<LooseFileType, kLooseFileTypeCount> LooseFileTypes;

/// The two lines of help for a type, by its name in any letter case; none when no type is named so.
std::optional<std::string> LooseFileHelp(std::string_view name);

} // namespace quillbay
