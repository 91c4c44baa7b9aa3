#pragma once

#include "library/GameFolders.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbay {

/// Finds files (with members `position` and `name`) in a list ordered by position, letter case of the name
/// ignored. Keeps references into the list. It indexes one position at a time, so callers go through their
/// names position by position.
template <typename File>
class PositionIndex {
public:
    explicit PositionIndex(const std::vector<File>& files) : files_(files) {}

    /// Null when there is none; the first of several.
    const File* Find(std::size_t position, std::string_view name) {
        if (indexed_ != position) {
            indexed_ = position;
            names_.clear();
            auto file = std::ranges::lower_bound(files_, position, {}, &File::position);
            for (; file != files_.end() && file->position == position; ++file)
                names_.emplace(FoldCase(file->name), &*file);
        }
        if (names_.empty()) return nullptr;
        const auto found = names_.find(FoldCase(name));
        return found == names_.end() ? nullptr : found->second;
    }

private:
    const std::vector<File>& files_;
    std::size_t indexed_ = kGameFolderCount; ///< at first none
    std::unordered_map<std::string, const File*> names_;
};

} // namespace quillbay
