#pragma once

#include "platform/FileSystem.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

namespace quillbay::test {

/// A new folder in the system's temporary folder, removed with everything in it at the end.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    /// UTF-8, without a final separator.
    const std::string& Path() const { return path_; }
    /// A path below it; `relative` as the program writes paths.
    std::string operator/(std::string_view relative) const;
    /// All that is in it: "empty/", "link->text", "sub/", "sub/file=bytes". Read past the code under test.
    std::set<std::string> Entries() const;
    /// The same, sorted in a line.
    std::string Contents() const;
    /// Makes the files and folders of such a text, whose names and bytes hold no blank.
    void Put(const std::string& contents) const;

private:
    std::string path_;
};

/// UTF-8 (any bytes on POSIX) with either separator, as the standard library takes it.
std::filesystem::path DiskPath(std::string_view path);
inline std::string DiskText(std::string_view path) { return DiskPath(path).string(); }

/// Makes a file with its parents, past the code under test. Throws on failure.
void PutFile(std::string_view path, std::string_view bytes);
void PutFolder(std::string_view path);

/// The bytes of a file, read past the code under test; throws when there is none.
std::string FileBytes(std::string_view path);

/// A test with a temporary folder on the real file system. Paths of the helpers are below that folder.
class DiskTest : public testing::Test {
protected:
    /// Told alike by both operations.
    FileInfo InfoOf(std::string_view path) const {
        const auto told = [](const FileInfo& i) {
            return std::tuple(i.kind, i.isLink, i.hidden, i.readOnly, i.executable, i.size, i.modified,
                              i.links, i.isMount, i.changed);
        };
        const FileInfo info = disk_->Stat(temp_ / path).ValueOr({});
        EXPECT_TRUE(told(info) == told(disk_->StatContents(temp_ / path).ValueOr({}))) << path;
        return info;
    }
    std::string BytesOf(std::string_view path) const { return FileBytes(temp_ / path); }

    const TempFolder temp_;
    const std::unique_ptr<FileSystem> disk_ = MakeFileSystem();
};

} // namespace quillbay::test
