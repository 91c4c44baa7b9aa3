#include "platform/SystemReg.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay {
namespace {

constexpr std::string_view kKey = R"(Software\Brightgate\Tempest II\v1.0)";
constexpr std::string_view kValue = "INSTALLPATH";
const std::string kHead = "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n";
const std::string kSection = "[Software\\\\Brightgate\\\\Tempest II\\\\v1.0] 1700000000\n#time=1d9\n";
const std::string kGood = "\"INSTALLPATH\"=\"C:\\\\T2\"\n";
const std::string kSection32 = "[Software\\\\Wow6432Node\\\\Brightgate\\\\Tempest II\\\\v1.0] 1700000000\n";

std::optional<std::string> Find(std::string_view text, std::size_t piece = std::string_view::npos) {
    SystemRegSearch search(kKey, kValue);
    while (!text.empty()) {
        const auto part = text.substr(0, piece);
        text.remove_prefix(part.size());
        if (!search.Feed(part)) break;
    }
    return search.Finish();
}

TEST(SystemRegTest, FindsTheValueInBothViews) {
    const std::string other = "[Software\\\\Other] 1\n\"INSTALLPATH\"=\"C:\\\\Wrong\"\n\n";
    const std::string value32 = "\"InstallPath\"=\"D:\\\\T2\"\n";
    EXPECT_EQ(Find(kHead + other + kSection + "@=\"x\"\n\"Version\"=dword:00000001\n" + kGood), "C:\\T2");
    EXPECT_EQ(Find(kHead + other + kSection32 + value32), "D:\\T2");
    EXPECT_EQ(Find(kHead + kSection32 + value32 + kSection + "\"INSTALLPATH\"=\"C:\\\\T2\""), "C:\\T2");
    EXPECT_EQ(Find(kHead + "[SOFTWARE\\\\BRIGHTGATE\\\\TEMPEST ii\\\\V1.0]\r\n\"installpath\"=\"E:\"\r\n"),
              "E:");
}

TEST(SystemRegTest, ReadsEscapes) {
    for (const auto& [text, value] : {std::pair{R"(a\"b\\c\n\t\x)", "a\"b\\c\n\tx"},
                                      {R"(\xe4\x00e4g\x20ac)", "ääg€"},
                                      {R"(\xd83d\xde80 \xd83d.)", "🚀 \uFFFD."},
                                      {R"(C:\\Cut\0off)", "C:\\Cut"},
                                      {R"(\1018)", "A8"},
                                      {"", ""}})
        EXPECT_EQ(Find(kHead + kSection + "\"INSTALLPATH\"=\"" + text + "\"\n"), value);
}

TEST(SystemRegTest, WhatIsDamagedOrOfAnotherKindCountsAsAbsent) {
    for (const std::string& text : {std::string(), "REGEDIT4\n" + kSection + kGood, kSection + kGood,
                                    kHead + "[Software\\\\Brightgate\\\\Tempest II\\\\v1.0\n" + kGood})
        EXPECT_EQ(Find(text), std::nullopt) << text;
    for (const auto* line :
         {"\"INSTALLPATH\"=dword:00000001", "\"INSTALLPATH\"=str(2):\"C:\"", "\"INSTALLPATH\"=hex(7):43,00",
          "\"INSTALLPATH\"=\"C:\\\\T2", "\"INSTALLPATH\"=\"C:\\", "\"INSTALLPATH\"", "\"INSTALLPATH",
          "\"INSTALLPATH\"=\"C:\" rest", "\"INSTALLPATH2\"=\"C:\""}) {
        EXPECT_EQ(Find(kHead + kSection + line), std::nullopt) << line;
        EXPECT_EQ(Find(kHead + kSection + line + "\n" + kSection32 + kGood), "C:\\T2") << line;
    }
    // A line without end is neither kept in memory nor taken for another one.
    const std::string endless(300'000, 'x');
    EXPECT_EQ(Find(kHead + kSection + endless + kGood), std::nullopt);
    EXPECT_EQ(Find(kHead + kSection + endless + "\n" + kGood, 1000), "C:\\T2");
}

TEST(SystemRegTest, AnyDamageInAnyPiecesIsSurvivedAlike) {
    const std::string text = kHead + kSection32 + "\"INSTALLPATH\"=\"D:\\\\\\x20ac\"\n" + kSection +
                             "\"a\"=hex:01,\\\n  02\n\"INSTALLPATH\"=\"C:\\\\Games\\0\"\n";
    std::mt19937 random(11);
    for (int round = 0; round < 3'000; ++round) {
        std::string damaged = text;
        for (int i = 0; i < round % 7; ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        damaged.resize(damaged.size() - random() % (damaged.size() / 2 * (round % 2) + 1));
        ASSERT_EQ(Find(damaged), Find(damaged, 1 + random() % 40)) << damaged;
    }
}

} // namespace
} // namespace quillbay
