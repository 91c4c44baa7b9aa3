#pragma once

#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace quillbay::test {

/// A test with a temporary folder on the real file system. Paths of the helpers are below that folder.
class DiskTest : public ::testing::Test {
protected:
    FileInfo InfoOf(std::string_view path) const { return disk_->Stat(temp_ / path).ValueOr({}); }
    std::string BytesOf(std::string_view path) const { return FileBytes(temp_ / path); }

    const TempFolder temp_;
    const std::unique_ptr<FileSystem> disk_ = MakeFileSystem();
};

} // namespace quillbay::test
