#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbay {

/// Files and folders below one folder, as they were put there. Names are one when they differ in letter case
/// only.
class StagedTree {
public:
    using Index = std::size_t;
    static constexpr Index kTop = 0; ///< the folder itself

    struct Node {
        std::string name; ///< empty at the top
        Index parent = kTop;
        bool isFolder = false;
        std::vector<Index> children;
    };

    StagedTree() : nodes_{{{}, kTop, true, {}}} {}

    const Node& operator[](Index node) const { return nodes_[node]; }
    std::optional<Index> Find(Index folder, std::string_view name) const;
    /// `folder` holds nothing of that name.
    Index Add(Index folder, std::string_view name, bool isFolder);
    /// In another letter case.
    void Respell(Index node, std::string_view name) { nodes_[node].name = name; }

    /// With `\` between the names; empty at the top.
    std::string PathOf(Index node) const;
    /// In the folder and all folders below; 1 for a file.
    std::size_t CountFiles(Index node) const;

private:
    std::vector<Node> nodes_;
    std::unordered_map<std::string, Index> byName_; ///< by the folder's index and the folded name
};

} // namespace quillbay
