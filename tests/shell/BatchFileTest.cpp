#include "shell/BatchFile.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(BatchFile, HoldsExactlyTheseBytes) {
    EXPECT_EQ(GameBatchText("C:\\PROGRA~1\\T2").bytes,
              "@Echo Off\r\nCD C:\\PROGRA~1\\T2\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "  my map.bzn ").bytes,
              "@Echo Off\r\nCD C:\\T2\r\nTempest2.exe /edit   my map.bzn \r\nCls\r\n");
    const std::pair<const char*, const char*> folders[] = {
        {"C:\\Tempest II", "\"C:\\Tempest II\""}, {"C:\\a&b", "\"C:\\a&b\""},
        {"C:\\100%T2%", "\"C:\\100%%T2%%\""},     {"C:\\x^y!", "\"C:\\x^y!\""},
        {"C:\\J\u00fcrgen", "C:\\J\xFCrgen"},     {"D:\\", "D:\\"},
    };
    for (const auto& [folder, argument] : folders)
        EXPECT_EQ(GameBatchText(folder).bytes,
                  std::string("@Echo Off\r\nCD ") + argument + "\r\nTempest2.exe\r\nExit\r\nCls\r\n");
}

TEST(BatchFile, RefusesWhatWouldReadDifferently) {
    const std::pair<const char*, const char*> folders[] = {
        {"C:\\\u0436", "\u0436"}, {"Z:\\a\"&calc&\"b", "\""}, {"Z:\\a\r\ncalc", "\r"}, {"Z:\\a?", "?"}};
    for (const auto& [folder, character] : folders)
        EXPECT_EQ(GameBatchText(folder).unencodable, character) << folder;
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "a\u0436").unencodable, "\u0436");
    EXPECT_EQ(MapEditorBatchText("C:\\T2", "a\ncalc").unencodable, "\n");
}

} // namespace
} // namespace quillbay
