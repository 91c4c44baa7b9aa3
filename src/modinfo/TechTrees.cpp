#include "modinfo/TechTrees.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

struct Option {
    std::string_view name;
    std::string_view file;
    std::string_view otherFile; ///< does as well; empty for none
};

/// The files that the game reads.
constexpr Option kOptions[] = {
    {"Standard Tech", "tech1.tt", {}},      {"No Super Weapons", "nosuper.tt", {}},
    {"No Science Ships", "nosci.tt", {}},   {"No Special Weapons", "nospweap.tt", {}},
    {"Early Upgrades", "earlytech.tt", {}}, {"Free Tech", "fulltech.tt", "freetech.tt"},
};

} // namespace

TechTrees FindTechTrees(const FileSystem& files, std::string_view modLibrary, const ModPath& mod) {
    std::vector<DirEntry> entries;
    if (!mod.Empty())
        entries = files.List(Join(Join(modLibrary, mod.text), "techtree"), Detail::Names).ValueOr({});
    TechTrees trees;
    for (const Option& option : kOptions) {
        const bool isThere = std::any_of(entries.begin(), entries.end(), [&](const DirEntry& entry) {
            return entry.IsPlainFile() &&
                   (EqualFolded(entry.name, option.file) || EqualFolded(entry.name, option.otherFile));
        });
        (isThere ? trees.available : trees.unavailable).push_back(option.name);
    }
    return trees;
}

} // namespace quillbay
