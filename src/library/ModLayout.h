#pragma once

#include "library/StagedTree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Where in an unpacked archive the mods begin.
namespace quillbay {

enum class LeftOutReason {
    Link,             ///< or a device or the like
    Name,             ///< no system, or not every one, keeps it as it is
    Backup,           ///< it would make the mod count as installed
    Clutter,          ///< what systems and this program leave behind
    Superseded,       ///< a later file has the same name, or one that differs in letter case only
    FileAndFolder,    ///< something else of that name is a folder, or a file
    BesideSeveralMods ///< it would not be known whose it is
};

struct LeftOut {
    std::string path; ///< of the topmost that was left out, for all below it
    LeftOutReason reason;

    friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// Something that gets another place: a file or a whole folder.
struct LayoutMove {
    std::string from; ///< below what was unpacked
    std::string to;   ///< below the mod's folder

    friend bool operator==(const LayoutMove&, const LayoutMove&) = default;
};

struct NewMod {
    std::string name; ///< proposed; it may be taken, or no good
    std::string root; ///< its folder below what was unpacked; empty when that is all of it
    std::vector<LayoutMove> moves;
    std::size_t files = 0;
    bool isSorted = false; ///< it has folders of the game; otherwise the file installer has work
};

struct ModLayout {
    std::vector<NewMod> mods; ///< none when there is no file at all
    std::vector<LeftOut> leftOut;
};

/// `sourceName` names the mod that has no folder of its own.
ModLayout PlanMods(const StagedTree& tree, std::string_view sourceName);

/// A mod's name from that of its archive: without ending and version.
std::string ModNameFromArchive(std::string_view fileName);

} // namespace quillbay
