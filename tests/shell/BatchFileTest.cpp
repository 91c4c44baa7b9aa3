#include "shell/BatchFile.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(BatchFile, HoldsExactlyTheseBytes) {
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
} // namespace quillbay
