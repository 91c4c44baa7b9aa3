#include "library/GameDirectory.h"

#include "platform/DosPath.h"
#include "shell/BatchFile.h"
#include "support/TempFolder.h"

namespace quillbay::test {
namespace {

class GameDirectoryTest : public DiskTest {};

class OneValueRegistry : public Registry {
public:
    std::string value;
    std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                   std::string_view fallback) const override {
        const bool known = key == R"(Software\Brightgate\Tempest II\v1.0)" && valueName == "INSTALLPATH";
        return known ? value : std::string(fallback);
    }
};

TEST_F(GameDirectoryTest, ComesFromTheGamesOwnRegistryEntry) {
    OneValueRegistry registry;
    EXPECT_EQ(ReadGameDirectory(registry).path, "");
    registry.value = "C:\\T2\\";
    EXPECT_EQ(ReadGameDirectory(registry).path, NativePath("C:\\T2\\"));
}

TEST_F(GameDirectoryTest, BatchFilesHoldExactlyTheseBytes) {
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "  my map.bzn ").bytes,
              "@Echo Off\r\nCD C:\\T2\r\nTempest2.exe /edit   my map.bzn \r\nCls\r\n");
    const char* const folders[][2] = {
        {"C:\\PROGRA~1\\T2", "C:\\PROGRA~1\\T2"},
        {"C:\\J\u00fcrgen", "C:\\J\xFCrgen"},
        {"C:\\a&b c", "\"C:\\a&b c\""},
        {"C:\\100%T2%", "\"C:\\100%%T2%%\""},
    };
    for (const auto& [folder, argument] : folders)
        EXPECT_EQ(GameBatchText(folder).bytes,
                  std::string("@Echo Off\r\nCD ") + argument + "\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    for (const char* refused : {"\u0436", "\"", "\r"})
        EXPECT_EQ(GameBatchText(std::string("Z:\\a") + refused + "&calc").unencodable, refused);
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "a\ncalc").unencodable, "\n");
}

} // namespace
} // namespace quillbay::test
