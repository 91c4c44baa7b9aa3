#include "help/ReadmeTopics.h"

#include <gtest/gtest.h>
#include <set>

namespace quillbay {
namespace {

TEST(ReadmeTopics, StandInTheirOrderAndLevels) {
    std::string levels;
    std::set<std::string_view> names;
    for (const ReadmeTopic& topic : ReadmeTopics()) {
        levels += static_cast<char>('0' + topic.level);
        EXPECT_TRUE(names.insert(topic.name).second) << topic.name;
        const std::string text = ReadmeText(topic, "C:\\Quillbay");
        EXPECT_FALSE(text.empty()) << topic.name;
        EXPECT_EQ(text.find_first_of("{}~\r\t"), std::string::npos) << text;
    }
    EXPECT_EQ(levels, "011111"
                      "0111123323112233333122222"
                      "0112211211220");
    EXPECT_EQ(ReadmeRow(ReadmeTopics()[12]), "            File commands");
}

TEST(ReadmeTopics, TextJoinsTheLinesOfAParagraph) {
    const ReadmeTopic topic{"", 0,
                            "One\ntwo\n\nThree:\n- four\nfive\n1. six\n    {program}\nseven {address}"};
    EXPECT_EQ(ReadmeText(topic, "P{address}"),
              "One two\n\nThree:\n- four five\n1. six\n    P{address}\nseven " +
                  std::string(kContactAddress));
}

} // namespace
} // namespace quillbay
