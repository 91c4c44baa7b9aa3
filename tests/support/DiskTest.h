#pragma once

#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillbay::test {

/// A test with a temporary folder on the real file system. Paths of the helpers are below that folder.
class DiskTest : public ::testing::Test {
protected:
    /// The names in a folder, sorted; none when it cannot be listed.
    std::vector<std::string> NamesIn(std::string_view folder = {}) const {
        std::vector<std::string> names;
        for (const auto& entry : disk_->List(temp_ / folder, Detail::Names).ValueOr({}))
            names.push_back(entry.name);
        std::ranges::sort(names);
        return names;
    }
    FileInfo InfoOf(std::string_view path) const { return disk_->Stat(temp_ / path).ValueOr({}); }
    std::string BytesOf(std::string_view path) const { return FileBytes(temp_ / path); }

    const TempFolder temp_;
    const std::unique_ptr<FileSystem> disk_ = MakeFileSystem();
};

} // namespace quillbay::test
