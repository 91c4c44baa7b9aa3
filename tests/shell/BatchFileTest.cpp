#include "shell/BatchFile.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(BatchFile, HoldsExactlyTheseBytes) {
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "  my map.bzn ").bytes,
              "@Echo Off\r\nCD C:\\T2\r\nTempest2.exe /edit   my map.bzn \r\nCls\r\n");
    const std::pair<const char*, const char*> folders[] = {
        {"C:\\PROGRA~1\\T2", "C:\\PROGRA~1\\T2"},
        {"C:\\Tempest II", "\"C:\\Tempest II\""},
        {"C:\\a&b", "\"C:\\a&b\""},
        {"C:\\100%T2%", "\"C:\\100%%T2%%\""},
        {"C:\\J\u00fcrgen", "C:\\J\xFCrgen"},
        {"D:\\", "D:\\"},
    };
    for (const auto& [folder, argument] : folders)
        EXPECT_EQ(GameBatchText(folder).bytes,
                  std::string("@Echo Off\r\nCD ") + argument + "\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    for (const char* refused : {"\u0436", "\"", "\r", "?"})
        EXPECT_EQ(GameBatchText(std::string("Z:\\a") + refused + "&calc").unencodable, refused);
    for (const char* refused : {"\u0436", "\n"})
        EXPECT_EQ(MapEditorBatchText("C:\\T2", std::string("a") + refused + "calc").unencodable, refused);
}

} // namespace
} // namespace quillbay
