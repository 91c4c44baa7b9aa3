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

TEST_F(Compatibility, ListsKnownFoldersInListOrderUnlessItCannot) {
    for (const char* file : {"ModPic.jpg", "Textures/modpic.jpg", "Textures/Rgb/t.tga", "odf/a.odf",
                             "odf/Ships/s.odf", "odf/Ships/ModInfo.txt", "Backup/odf/a.odf", "unknown/u.odf"})
        test::PutFile(temp_ / (std::string("m/") + file), "");
    const auto list = [&](const FileSystem& files, auto... leftOut) {
        return ListComparedFiles(files, temp_ / "m", leftOut...);
    };
    EXPECT_EQ(list(*disk_, kDescriptionFiles).paths,
              (Paths{"odf\\a.odf", "odf\\ships\\s.odf", "Textures\\modpic.jpg", "Textures\\Rgb\\t.tga"}));
    FaultyFileSystem faulty(*disk_);
    faulty.Arm(2, FaultyFileSystem::Fault::Fail, std::errc::permission_denied);
    EXPECT_EQ(list(faulty).failure.error, std::errc::permission_denied);

    for (std::size_t i = 4; i < kMostComparedFiles; ++i)
        test::PutFile(temp_ / ("m/odf/" + std::to_string(i)), "");
    EXPECT_EQ(list(*disk_, kDescriptionFiles).paths.size(), kMostComparedFiles);
    EXPECT_TRUE(list(*disk_).tooMany);
}

} // namespace
} // namespace quillbay
