#include "library/ModLayout.h"

#include "common/modMisc.h"
#include "library/GameFolders.h"
#include "library/ModFiles.h"
#include "library/ModRows.h"
#include "platform/CaseFold.h"
#include "platform/NumberText.h"
#include "platform/PathText.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace quillbay {

namespace {

using Index = StagedTree::Index;
using Names = std::unordered_set<std::string>;

/// No folder of the game, so that nothing in it is installed.
constexpr std::string_view kDocsName = "Docs";

/// What known folders begin with, folded.
const Names& FirstParts() {
    static const Names parts = [] {
        Names made;
        for (const std::string_view folder : GameFolders)
            if (!folder.empty()) made.insert(FoldCase(folder.substr(0, folder.find('\\'))));
        return made;
    }();
    return parts;
}

/// What describes a mod belongs into its folder itself.
bool IsDescription(std::string_view name) {
    return EqualFolded(name, kModInfoName) || StartsFolded(name, "ModPic.") || ContainsText(name, "readme");
}

/// The folder of a mod, or of an addon, that takes what is neither the game's nor the mod's description.
class Docs {
public:
    /// `inMod`: the way from the mod's folder to `folder`; empty when they are one.
    Docs(const StagedTree& tree, Index folder, std::string inMod) : tree_(tree), inMod_(std::move(inMod)) {
        Names beside;
        for (const Index child : tree[folder].children)
            beside.insert(FoldCase(tree[child].name));
        const auto existing = tree.Find(folder, kDocsName);
        const bool isThere = existing && tree[*existing].isFolder;
        name_ = isThere ? tree[*existing].name : TakeFreeName(beside, std::string(kDocsName));
        if (!isThere) return;
        for (const Index child : tree[*existing].children)
            taken_.insert(FoldCase(tree[child].name));
    }

    void Take(Index node, NewMod& mod) {
        mod.moves.push_back(
            {tree_.PathOf(node), Join(Join(inMod_, name_), TakeFreeName(taken_, tree_[node].name))});
    }

private:
    /// `name`, or a number before its ending where that is taken; it is taken then.
    static std::string TakeFreeName(Names& taken, const std::string& name) {
        const std::size_t dot = std::min(name.rfind('.'), name.size());
        std::string free = name;
        for (int number = 2; !taken.insert(FoldCase(free)).second; ++number)
            free = name.substr(0, dot) + " (" + std::to_string(number) + ')' + name.substr(dot);
        return free;
    }

    const StagedTree& tree_;
    std::string inMod_;
    std::string name_;
    Names taken_; ///< folded
};

class LayoutPlanner {
public:
    LayoutPlanner(const StagedTree& tree, std::string_view sourceName)
        : tree_(tree), sourceName_(sourceName) {}

    ModLayout Plan() {
        if (tree_.CountFiles(StagedTree::kTop) == 0) return {};
        std::vector<Index> roots = FindRoots();
        const bool isSorted = !roots.empty();
        if (!isSorted) roots = {FindFlatRoot()};
        for (const Index root : roots) {
            layout_.mods.push_back(DescribeMod(root, isSorted));
            NewMod& mod = layout_.mods.back();
            Docs docs(tree_, root, {});
            MoveChanged(root, docs, mod);
            MoveChangedOfAddons(root, mod);
            if (roots.size() == 1) MovePapers(root, docs, mod);
        }
        if (roots.size() > 1) LeaveOutPapers(roots);
        return std::move(layout_);
    }

private:
    /// A folder in which nothing could be installed, all its folders being empty, is none.
    bool IsModRoot(Index folder) const {
        const auto tells = [this](Index child) {
            const auto& node = tree_[child];
            if (!node.isFolder) return EqualFolded(node.name, kModInfoName);
            return EqualFolded(node.name, kAddonName) || FirstParts().contains(FoldCase(node.name));
        };
        return std::ranges::any_of(tree_[folder].children, tells) && tree_.CountFiles(folder) > 0;
    }

    /// The shallowest ones.
    std::vector<Index> FindRoots() const {
        std::vector<Index> level{StagedTree::kTop};
        while (!level.empty()) {
            std::vector<Index> roots;
            std::vector<Index> next;
            for (const Index folder : level) {
                if (IsModRoot(folder)) roots.push_back(folder);
                for (const Index child : tree_[folder].children)
                    if (tree_[child].isFolder) next.push_back(child);
            }
            if (!roots.empty()) return roots;
            level = std::move(next);
        }
        return {};
    }

    /// Where nothing tells: inside the folders that hold one folder, beside a description at most.
    Index FindFlatRoot() const {
        for (Index root = StagedTree::kTop;;) {
            std::optional<Index> only;
            for (const Index child : tree_[root].children) {
                if (!tree_[child].isFolder && IsDescription(tree_[child].name)) continue;
                if (!tree_[child].isFolder || only) return root;
                only = child;
            }
            if (!only || tree_.CountFiles(*only) == 0) return root;
            root = *only;
        }
    }

    NewMod DescribeMod(Index root, bool isSorted) const {
        const std::string& name = tree_[root].name;
        const bool isNameless = name.empty() || EqualFolded(name, kModsName);
        return {isNameless ? sourceName_ : name, tree_.PathOf(root), {}, tree_.CountFiles(root), isSorted};
    }

    /// In the folder of a mod or addon `Changed` is this program's own.
    void MoveChanged(Index folder, Docs& docs, NewMod& mod) const {
        if (const auto changed = tree_.Find(folder, kChangedName)) docs.Take(*changed, mod);
    }

    void MoveChangedOfAddons(Index root, NewMod& mod) const {
        const auto addons = tree_.Find(root, kAddonName);
        if (!addons) return;
        for (const Index addon : tree_[*addons].children) {
            Docs docs(tree_, addon, Join(tree_[*addons].name, tree_[addon].name));
            MoveChanged(addon, docs, mod);
        }
    }

    /// What stands above or beside the mod's folder.
    void MovePapers(Index root, Docs& docs, NewMod& mod) const {
        Names described;
        for (Index below = root; below != StagedTree::kTop; below = tree_[below].parent) {
            for (const Index node : tree_[tree_[below].parent].children) {
                const auto& [name, parent, isFolder, children] = tree_[node];
                const std::size_t files = node == below ? 0 : tree_.CountFiles(node);
                if (files == 0) continue;
                mod.files += files;
                const bool describes = !isFolder && IsDescription(name) && !tree_.Find(root, name) &&
                                       described.insert(FoldCase(name)).second;
                if (describes) {
                    mod.moves.push_back({tree_.PathOf(node), name});
                } else {
                    docs.Take(node, mod);
                }
            }
        }
    }

    void LeaveOutPapers(const std::vector<Index>& roots) {
        std::unordered_set<Index> ways; // to the roots
        for (Index node : roots)
            for (; ways.insert(node).second && node != StagedTree::kTop;)
                node = tree_[node].parent;
        const std::unordered_set<Index> isRoot(roots.begin(), roots.end());
        std::vector<Index> pending{StagedTree::kTop};
        while (!pending.empty()) {
            const Index folder = pending.back();
            pending.pop_back();
            for (const Index node : tree_[folder].children) {
                if (isRoot.contains(node)) continue;
                if (ways.contains(node)) {
                    pending.push_back(node);
                } else if (tree_.CountFiles(node) > 0) {
                    layout_.leftOut.push_back({tree_.PathOf(node), LeftOutReason::BesideSeveralMods});
                }
            }
        }
    }

    const StagedTree& tree_;
    std::string sourceName_;
    ModLayout layout_;
};

/// ` (1)`, as a browser or a file manager adds.
std::string_view WithoutCopyNumber(std::string_view name) {
    const auto open = name.rfind('(');
    if (!name.ends_with(')') || open == std::string_view::npos || name.size() - open < 3) return name;
    const auto number = name.substr(open + 1, name.size() - open - 2);
    return IsDigits(number) ? name.substr(0, open) : name;
}

/// `_v1.2`, `-1.0.3b`: behind a separator, with a `v` or a point.
std::string_view WithoutVersion(std::string_view name) {
    const auto separator = name.find_last_of(" _-");
    if (separator == std::string_view::npos) return name;
    auto version = name.substr(separator + 1);
    const bool hasMark = version.starts_with('v') || version.starts_with('V');
    if (hasMark) version.remove_prefix(1);
    if (!version.empty() && !IsDigit(version.back())) version.remove_suffix(1); // 1.0.3b
    const bool isNumber = !version.empty() && IsDigit(version.front()) && IsDigit(version.back()) &&
                          std::ranges::all_of(version, [](char c) { return IsDigit(c) || c == '.'; });
    return isNumber && (hasMark || version.find('.') != std::string_view::npos) ? name.substr(0, separator)
                                                                                : name;
}

std::string_view WithoutEnding(std::string_view name) {
    constexpr std::string_view kEndings[] = {".tar.gz", ".tar.bz2", ".tar.xz", ".tgz", ".tbz2", ".tbz",
                                             ".txz",    ".tar",     ".zip",    ".7z",  ".rar",  ".exe"};
    for (const auto ending : kEndings)
        if (name.size() > ending.size() && EndsFolded(name, ending))
            return name.substr(0, name.size() - ending.size());
    return name;
}

} // namespace

ModLayout PlanMods(const StagedTree& tree, std::string_view sourceName) {
    return LayoutPlanner(tree, sourceName).Plan();
}

std::string ModNameFromArchive(std::string_view fileName) {
    std::string_view name = WithoutEnding(fileName);
    for (std::string_view longer; longer != name;) {
        longer = name;
        for (const auto strip : {WithoutCopyNumber, WithoutVersion}) {
            auto shorter = strip(name);
            while (!shorter.empty() &&
                   std::string_view(" _-.").find(shorter.back()) != std::string_view::npos)
                shorter.remove_suffix(1);
            if (!shorter.empty()) name = shorter;
        }
    }
    return std::string(name);
}

} // namespace quillbay
