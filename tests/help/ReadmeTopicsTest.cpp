#include "help/ReadmeTopics.h"

#include <gtest/gtest.h>
#include <set>

namespace quillbay {
namespace {

TEST(ReadmeTopics, StandInTheirOrderAndLevels) {
    const auto topics = ReadmeTopics();
    std::string levels;
    std::set<std::string_view> names;
    for (const ReadmeTopic& topic : topics) {
        levels += static_cast<char>('0' + topic.level);
        names.insert(topic.name);
        const std::string text = ReadmeText(topic, "C:\\Quillbay");
        EXPECT_FALSE(text.empty()) << topic.name;
        EXPECT_EQ(text.find_first_of("{}~\r\t"), std::string::npos) << text;
    }
    EXPECT_EQ(levels, "011111"
                      "0111123323112233333122222"
                      "0112211211220");
    EXPECT_EQ(names.size(), 44U);
    EXPECT_EQ(ReadmeRow(topics.front()), "Introduction");
    EXPECT_EQ(ReadmeRow(topics[12]), "            File commands");
    EXPECT_EQ(ReadmeRow(topics.back()), "Report a bug/make a suggestion");
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
