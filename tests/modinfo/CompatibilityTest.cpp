#include "modinfo/Compatibility.h"

#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

namespace quillbay {
namespace {

using Paths = std::vector<std::string>;
using Compatibility = test::DiskTest;

TEST_F(Compatibility, ComparesKnownFoldersInListOrderUnlessItCannot) {
    EXPECT_EQ(CommonPaths({"b", "A", "odf\\a", "b", "x"}, {"x", "a", "odf\\a", "Odf\\a", "b"}),
              (Paths{"b", "odf\\a", "x"}));
    for (const char* file : {"ModPic.jpg", "Textures/modpic.jpg", "Textures/Rgb/t.tga", "odf/a.odf",
                             "odf/Ships/s.odf", "odf/Ships/ModInfo.txt", "Backup/odf/a.odf", "unknown/u.odf"})
        test::PutFile(temp_ / (std::string("m/") + file), "");
    EXPECT_EQ(ListComparedFiles(*disk_, temp_ / "m", kDescriptionFiles).paths,
              (Paths{"odf\\a.odf", "odf\\ships\\s.odf", "Textures\\modpic.jpg", "Textures\\Rgb\\t.tga"}));
    FaultyFileSystem faulty(*disk_);
    faulty.Arm(2, FaultyFileSystem::Fault::Fail, std::errc::permission_denied);
    EXPECT_EQ(ListComparedFiles(faulty, temp_ / "m").failure.error, std::errc::permission_denied);

    for (std::size_t i = 4; i < kMostComparedFiles; ++i)
        test::PutFile(temp_ / ("m/odf/" + std::to_string(i)), "");
    EXPECT_EQ(ListComparedFiles(*disk_, temp_ / "m", kDescriptionFiles).paths.size(), kMostComparedFiles);
    EXPECT_TRUE(ListComparedFiles(*disk_, temp_ / "m").tooMany);
}

} // namespace
} // namespace quillbay
