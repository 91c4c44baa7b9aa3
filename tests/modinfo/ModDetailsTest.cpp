#include "modinfo/ModDetails.h"

#include "support/DiskTest.h"
#include "support/ListingFileSystem.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class ModDetailsTest : public DiskTest {};

class UnreadableFiles : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;

    Result<std::string> Read(std::string_view, std::uint64_t, std::size_t) const override {
        return std::errc::permission_denied;
    }
};

std::vector<std::string> PictureNames(const ModDetails& details) {
    std::vector<std::string> names;
    for (const std::string& path : details.pictures)
        names.push_back(path.substr(path.size() - 10));
    return names;
}

TEST_F(ModDetailsTest, CountsKnownFoldersButMeasuresTheWholeFolder) {
    PutFile(temp_ / "odf\\ships\\a.odf", std::string(10, 'x'));
    PutFile(temp_ / "Backup\\odf\\ships\\a.odf", std::string(20, 'x'));
    PutFile(temp_ / "Docs\\README.txt", std::string(30, 'x'));
    PutFile(temp_ / "mODiNFO.TXT", "Author: Bob");
    const ListingFileSystem files(*disk_);

    const ModDetails details = ReadModDetails(files, temp_.Path());

    EXPECT_EQ(details.fileCount, 2U);
    EXPECT_EQ(details.size, 71U);
    EXPECT_FALSE(details.hasReadme);
    EXPECT_FALSE(details.hasPicture);
    EXPECT_EQ(details.captions.author, "Bob");
    EXPECT_EQ(files.listed[temp_.Path()], 1);

    PutFile(temp_ / "my ReadMe.doc", "");
    EXPECT_TRUE(ReadModDetails(files, temp_.Path()).hasReadme);
}

TEST_F(ModDetailsTest, TheListingOrderDecidesBetweenPictures) {
    using Names = std::vector<std::string>;
    PutFile(temp_ / "modpic.gif", "g");
    EXPECT_FALSE(ReadModDetails(*disk_, temp_.Path()).hasPicture);
    PutFile(temp_ / "ModPic.jpg", "j");
    const ModDetails gifFirst = ReadModDetails(ListingFileSystem(*disk_, "modpic.gif"), temp_.Path());
    EXPECT_TRUE(gifFirst.hasPicture);
    EXPECT_TRUE(gifFirst.pictures.empty());
    PutFile(temp_ / "ModPic.bmp", "b");
    EXPECT_EQ(PictureNames(ReadModDetails(ListingFileSystem(*disk_, "ModPic.bmp"), temp_.Path())),
              Names{"ModPic.bmp"});
    EXPECT_EQ(PictureNames(ReadModDetails(ListingFileSystem(*disk_, "ModPic.jpg"), temp_.Path())),
              (Names{"ModPic.bmp", "ModPic.jpg"}));
}

TEST_F(ModDetailsTest, WhatCannotBeReadKeepsItsFallback) {
    PutFile(temp_ / "ModInfo.txt", "Author: Bob");
    const UnreadableFiles files(*disk_);
    EXPECT_EQ(ReadModDetails(files, temp_.Path()).captions.author, "(File does not contain author)");
    const ModDetails gone = ReadModDetails(files, temp_ / "gone");
    EXPECT_FALSE(gone.fileCount);
    EXPECT_FALSE(gone.size);
    EXPECT_EQ(gone.captions.author, "(File 'ModInfo.txt' not found)");
}

TEST_F(ModDetailsTest, FilesLongerThanOnePieceAreReadToTheEnd) {
    PutFile(temp_ / "ModInfo.txt", std::string(3 * 1024 * 1024, '\0') + "\r\nAuthor: Bob");
    EXPECT_EQ(ReadModInfo(*disk_, temp_ / "ModInfo.txt").value().author, "Bob");
    EXPECT_FALSE(ReadModInfo(*disk_, temp_ / "gone"));
}

} // namespace
} // namespace quillbay::test
