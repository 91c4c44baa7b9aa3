#include "platform/posix/LauncherFiles.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay::test {
namespace {

using Texts = std::vector<std::string>;

const std::string kNewForm =
    "\"libraryfolders\"\n{\n\t\"0\"\n\t{\n\t\t\"path\"\t\t\"/home/a/Steam\"\n"
    "\t\t\"label\"\t\t\"/no\"\n\t\t\"apps\"\n\t\t{\n\t\t\t\"12\"\t\t\"/34\"\n\t\t}\n\t}\n"
    "\t\"1\" { \"path\" \"/b \\\"c\\\\d\" }\n}\n";
const std::string kOldForm =
    "\"LibraryFolders\"\r\n{\r\n// \"3\" \"/no\"\r\n\t\"TimeNextStatsReport\"\t\"15\"\r\n"
    "\t\"ContentStatsID\"\t\"-8\"\r\n\t\"1\"\t\"/mnt/Games\"\r\n\t2 /plain\r\n}\r\n";
const std::string kJson = R"({"App" : {"note": "winePrefix", "winePrefix" :"/p\u00e4\ud83d\ude80\/q\"r",
    "other": ["winePrefix", {"winePrefix":null}], "winePrefix":"/two"}})";
const std::string kYaml =
    "game:\n  exe: /no\n  prefix: /a/b c # why\n  prefix_of: /no\n  prefix: 'it''s:\n    long'\n"
    "wine: {}\nprefix: \"/\\xDC \\\"x\\\"\\\n  \\ y\"\nsystem:\n  prefix:\n";

TEST(PosixLauncherFilesTest, GiveTheirFoldersInEveryForm) {
    EXPECT_EQ(SteamLibraries(kNewForm), (Texts{"/home/a/Steam", "/b \"c\\d"}));
    EXPECT_EQ(SteamLibraries(kOldForm), (Texts{"/mnt/Games", "/plain"}));
    EXPECT_EQ(JsonTexts(kJson, "winePrefix"), (Texts{"/pä🚀/q\"r", "/two"}));
    EXPECT_EQ(YamlTexts(kYaml, "prefix"), (Texts{"/a/b c", "it's: long", "/Ü \"x\" y", ""}));
}

TEST(PosixLauncherFilesTest, AnyDamageIsSurvivedAndKeepsWhatStandsBeforeIt) {
    const auto readSteam = [](std::string_view text) { return SteamLibraries(text); };
    const auto readJson = [](std::string_view text) { return JsonTexts(text, "winePrefix"); };
    const auto readYaml = [](std::string_view text) { return YamlTexts(text, "prefix"); };
    using Reader = Texts (*)(std::string_view);
    // The first text stands whole before `safe`.
    const struct {
        Reader read;
        const std::string& text;
        std::string_view safe;
    } kinds[] = {{readSteam, kNewForm, "label"},
                 {readSteam, kOldForm, "2 /plain"},
                 {readJson, kJson, "other"},
                 {readYaml, kYaml, "prefix_of"}};
    std::mt19937 random(5);
    for (const auto& [read, text, safe] : kinds) {
        const auto intact = text.find(safe);
        const std::string first = read(text).front();
        for (int round = 0; round < 2'000; ++round) {
            std::string damaged = text;
            for (int i = 0; i <= round % 7; ++i)
                damaged[intact + random() % (text.size() - intact)] = static_cast<char>(random());
            damaged.resize(damaged.size() - random() % (text.size() - intact));
            const auto texts = read(damaged);
            ASSERT_FALSE(texts.empty()) << damaged;
            ASSERT_EQ(texts.front(), first) << damaged;
            for (char& c : damaged)
                c = "\"\\{}:' \nu1p/"[random() % 12];
            for (const auto& found : read(damaged))
                ASSERT_LE(found.size(), damaged.size());
        }
    }
}

} // namespace
} // namespace quillbay::test
