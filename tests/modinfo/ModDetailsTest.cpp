#include "modinfo/ModDetails.h"

#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace quillbay {
namespace {

/// Lists the wanted name before all others, and counts the listings of each folder.
class ListingFirst : public FileSystemWrapper {
public:
    ListingFirst(FileSystem& base, std::string first) : FileSystemWrapper(base), first_(std::move(first)) {}

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        ++listed[std::string(folder)];
        auto entries = Base().List(folder, detail);
        if (entries) {
            std::stable_partition(entries->begin(), entries->end(),
                                  [this](const DirEntry& entry) { return entry.name == first_; });
        }
        return entries;
    }
    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override {
        if (unreadable) return std::errc::permission_denied;
        return Base().Read(file, offset, maxBytes);
    }

    mutable std::map<std::string, int> listed;
    bool unreadable = false;

private:
    std::string first_;
};

std::vector<std::string> PictureNames(const ModDetails& details) {
    std::vector<std::string> names;
    for (const std::string& path : details.pictures)
        names.push_back(path.substr(path.size() - 10));
    return names;
}

TEST(ModDetails, CountsKnownFoldersButMeasuresTheWholeFolder) {
    TempFolder temp;
    temp.WriteFile("odf\\ships\\a.odf", std::string(10, 'x'));
    temp.WriteFile("Backup\\odf\\ships\\a.odf", std::string(20, 'x'));
    temp.WriteFile("Docs\\README.txt", std::string(30, 'x'));
    temp.WriteFile("mODiNFO.TXT", "Author: Bob");
    const ListingFirst files(temp.Files(), "");

    const ModDetails details = ReadModDetails(files, temp.Path());

    EXPECT_EQ(details.fileCount, 2U);
    EXPECT_EQ(details.size, 71U);
    EXPECT_FALSE(details.hasReadme);
    EXPECT_FALSE(details.hasPicture);
    EXPECT_EQ(details.captions.author, "Bob");
    EXPECT_EQ(files.listed[temp.Path()], 1);

    temp.WriteFile("my ReadMe.doc", "");
    EXPECT_TRUE(ReadModDetails(files, temp.Path()).hasReadme);
}

TEST(ModDetails, TheListingOrderDecidesBetweenPictures) {
    using Names = std::vector<std::string>;
    TempFolder temp;
    temp.WriteFile("ModPic.jpg", "j");
    temp.WriteFile("modpic.gif", "g");
    const ModDetails gifFirst = ReadModDetails(ListingFirst(temp.Files(), "modpic.gif"), temp.Path());
    EXPECT_TRUE(gifFirst.hasPicture);
    EXPECT_TRUE(gifFirst.pictures.empty());
    temp.WriteFile("ModPic.bmp", "b");
    EXPECT_EQ(PictureNames(ReadModDetails(ListingFirst(temp.Files(), "ModPic.bmp"), temp.Path())),
              Names{"ModPic.bmp"});
    EXPECT_EQ(PictureNames(ReadModDetails(ListingFirst(temp.Files(), "ModPic.jpg"), temp.Path())),
              (Names{"ModPic.bmp", "ModPic.jpg"}));
}

TEST(ModDetails, PicturesInOtherLetterCaseAreNone) {
    TempFolder temp;
    temp.WriteFile("modpic.bmp", "b");
    temp.MakeFolders("ModPic.jpg");
    const ModDetails details = ReadModDetails(temp.Files(), temp.Path());
    EXPECT_FALSE(details.hasPicture);
    EXPECT_TRUE(details.pictures.empty());
}

TEST(ModDetails, WhatCannotBeReadKeepsItsFallback) {
    TempFolder temp;
    temp.WriteFile("ModInfo.txt", "Author: Bob");
    ListingFirst files(temp.Files(), "");
    files.unreadable = true;
    EXPECT_EQ(ReadModDetails(files, temp.Path()).captions.author, "(File does not contain author)");
    const ModDetails gone = ReadModDetails(files, temp.Path("gone"));
    EXPECT_FALSE(gone.fileCount);
    EXPECT_FALSE(gone.size);
    EXPECT_EQ(gone.captions.author, "(File 'ModInfo.txt' not found)");
}

TEST(ReadModInfo, FilesLongerThanOnePieceAreReadToTheEnd) {
    TempFolder temp;
    temp.WriteFile("ModInfo.txt", std::string(3 * 1024 * 1024, '\0') + "\r\nAuthor: Bob");
    EXPECT_EQ(ReadModInfo(temp.Files(), temp.Path("ModInfo.txt")).value().author, "Bob");
    EXPECT_FALSE(ReadModInfo(temp.Files(), temp.Path("gone")));
}

} // namespace
} // namespace quillbay
