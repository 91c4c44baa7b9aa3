#include "library/StagedTree.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

std::string KeyOf(StagedTree::Index folder, std::string_view name) {
    return std::to_string(folder) + '\\' + FoldCase(name);
}

} // namespace

std::optional<StagedTree::Index> StagedTree::Find(Index folder, std::string_view name) const {
    const auto found = byName_.find(KeyOf(folder, name));
    return found == byName_.end() ? std::nullopt : std::optional(found->second);
}

StagedTree::Index StagedTree::Add(Index folder, std::string_view name, bool isFolder) {
    const Index node = nodes_.size();
    nodes_.push_back({std::string(name), folder, isFolder, {}});
    nodes_[folder].children.push_back(node);
    byName_.emplace(KeyOf(folder, name), node);
    return node;
}

std::string StagedTree::PathOf(Index node) const {
    std::string path;
    for (; node != kTop; node = nodes_[node].parent)
        path = Join(nodes_[node].name, path);
    return path;
}

std::size_t StagedTree::CountFiles(Index node) const {
    std::size_t files = 0;
    std::vector<Index> pending{node};
    while (!pending.empty()) {
        const Node& current = nodes_[pending.back()];
        pending.pop_back();
        if (!current.isFolder) ++files;
        pending.insert(pending.end(), current.children.begin(), current.children.end());
    }
    return files;
}

} // namespace quillbay
