#include "modinfo/Compatibility.h"

#include "library/GameFolders.h"
#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <algorithm>
#include <random>

namespace quillbay {
namespace {

using Paths = std::vector<std::string>;
using Compatibility = test::DiskTest;

TEST(CompatibilityPaths, AreThoseOfANestedScan) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        const auto makeSide = [&] {
            Paths side;
            for (const char* name : {"a", "A", "b.odf", "c", "x y", "\xFF", "e", "f"})
                if (random() % 2) side.push_back(std::string(GameFolders[random() % 3]) + name);
            std::ranges::shuffle(side, random);
            return side;
        };
        const Paths first = makeSide(), second = makeSide();
        Paths expected;
        for (const auto& path : first)
            for (const auto& other : second)
                if (path == other) expected.push_back(path);
        EXPECT_EQ(CommonPaths(first, second), expected);
    }
}

TEST_F(Compatibility, ListsKnownFoldersInListOrder) {
    for (const char* file :
         {"m/ModPic.jpg", "m/modpic.jpg", "m/Textures/Rgb/t.tga", "m/odf/a.odf", "m/odf/Ships/s.odf",
          "m/odf/Ships/ModInfo.txt", "m/odf/Ships/~quillbay.new", "m/Backup/odf/a.odf", "m/unknown/u.odf"})
        test::PutFile(temp_ / file, "");
    const Paths listed = ListComparedFiles(*disk_, temp_ / "m", kDescriptionFiles).paths;
    EXPECT_EQ(listed, (Paths{"odf\\a.odf", "odf\\ships\\s.odf", "Textures\\Rgb\\t.tga", "modpic.jpg"}));
    EXPECT_EQ(ListComparedFiles(*disk_, temp_ / "m").paths.size(), 6U);
}

TEST_F(Compatibility, RefusesWhatItCannotKnow) {
    EXPECT_EQ(ListComparedFiles(*disk_, temp_ / "none").failure.error, std::errc::no_such_file_or_directory);
    test::PutFile(temp_ / "m/odf/a.odf", "");
    FaultyFileSystem faulty(*disk_);
    faulty.Arm(2, FaultyFileSystem::Fault::Fail, std::errc::permission_denied);
    EXPECT_EQ(ListComparedFiles(faulty, temp_ / "m").failure.error, std::errc::permission_denied);
    for (std::size_t i = 1; i < kMostComparedFiles; ++i)
        test::PutFile(temp_ / ("m/odf/" + std::to_string(i)), "");
    EXPECT_EQ(ListComparedFiles(*disk_, temp_ / "m").paths.size(), kMostComparedFiles);
    test::PutFile(temp_ / "m/ModInfo.txt", "");
    EXPECT_TRUE(ListComparedFiles(*disk_, temp_ / "m").tooMany);
    EXPECT_FALSE(ListComparedFiles(*disk_, temp_ / "m", kDescriptionFiles).tooMany);
}

} // namespace
} // namespace quillbay
