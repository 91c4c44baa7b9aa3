#pragma once

#include "platform/FileSystemWrapper.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace quillbay::test {

/// Lists every folder in the same order on every system, sorted by name with `first` before all others, and
/// counts how often each folder was listed, and the calls of Stat.
class ListingFileSystem : public FileSystemWrapper {
public:
    explicit ListingFileSystem(FileSystem& base, std::string first = {})
        : FileSystemWrapper(base), first_(std::move(first)) {}

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        ++listed[std::string(folder)];
        auto entries = Base().List(folder, detail);
        if (entries) std::ranges::sort(*entries, {}, [this](const DirEntry& e) { return Key(e.name); });
        return entries;
    }

    Result<FileInfo> Stat(std::string_view path) const override {
        ++stats;
        return Base().Stat(path);
    }

    mutable std::map<std::string, int> listed;
    mutable int stats = 0;

private:
    std::pair<bool, std::string> Key(const std::string& name) const { return {name != first_, name}; }

    std::string first_;
};

} // namespace quillbay::test
