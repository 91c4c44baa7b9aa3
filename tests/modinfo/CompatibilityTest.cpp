#include "modinfo/Compatibility.h"

#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

namespace quillbay {
namespace {

using Paths = std::vector<std::string>;
using Compatibility = test::DiskTest;

TEST(CompatibilityPaths, KeepTheFirstOrderAndTheLetterCase) {
    EXPECT_EQ(CommonPaths({"b", "A", "odf\\a", "x"}, {"x", "a", "odf\\a", "Odf\\a", "b"}),
              (Paths{"b", "odf\\a", "x"}));
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
