#pragma once

#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <memory>

namespace quillbay::test {

/// A test with a temporary folder on the real file system.
class DiskTest : public ::testing::Test {
protected:
    const TempFolder temp_;
    const std::unique_ptr<FileSystem> disk_ = MakeFileSystem();
};

} // namespace quillbay::test
