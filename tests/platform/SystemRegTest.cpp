#include "platform/SystemReg.h"

#include "platform/OrderedSystemReg.h"

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

OrderedRegResult FindOrdered(std::string_view text, std::size_t piece, std::size_t* bytes = nullptr) {
    const auto pieceAt = [&](std::uint64_t offset) {
        const auto found = text.substr(std::min<std::uint64_t>(offset, text.size()), piece);
        if (bytes != nullptr) *bytes += found.size();
        return found;
    };
    return FindInOrderedReg(text.size(), pieceAt, kKey, kValue);
}

/// A registry as Wine writes it, with some of the wanted keys among many alike.
std::string OrderedText(std::mt19937& random) {
    constexpr const char* kNames[] = {"Brightgate", "brightgat", "Brightgate_", "Brightgates",
                                      "Tempest II", "Tempest",   "Tempest IIa", "v1.0",
                                      "v1.0 ",      "v1",        "Wow6432Node", "\u00e4"};
    std::map<std::string, std::string> sections; // by the components, each with its end, in lower case
    const auto add = [&](const std::vector<std::string>& names, const std::string& values) {
        std::string key, line = "[Software";
        for (const auto& name : names) {
            key += name + '\1';
            line += "\\\\" + name;
        }
        std::ranges::transform(key, key.begin(), [](unsigned char c) { return char(std::tolower(c)); });
        sections[key] = line + "] 1\n" + values + '\n';
    };
    for (int i = 0; i < 400; ++i) {
        std::vector<std::string> names(1 + random() % 5);
        for (auto& name : names)
            name = random() % 2 ? kNames[random() % std::size(kNames)] : std::to_string(random() % 50);
        add(names, kGood.substr(0, 12) + "b\"=\"" +
                       std::string(random() % 20 ? random() % 200 : 30'000, 'x') + "\"\n");
    }
    if (random() % 2) add({"Brightgate", "Tempest II", "v1.0"}, std::string(random() % 9'000, '\n') + kGood);
    if (random() % 2) add({"Wow6432Node", "Brightgate", "Tempest II", "v1.0"}, "\"INSTALLPATH\"=\"D:\"\n");
    std::string text = kHead;
    for (const auto& [key, section] : sections)
        text += section;
    return text;
}

TEST(OrderedSystemRegTest, FindsInAFewPiecesWhatAWholeReadingFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        std::string text = OrderedText(random);
        const std::size_t piece = round % 2 ? 4096 : 2 + random() % 300;
        const auto value = Find(text);
        const auto found = FindOrdered(text, piece);
        ASSERT_TRUE(found.ordered);
        ASSERT_EQ(found.value, value) << round;
        // What was put at one of its ends by hand stands in no order, or is found.
        for (const bool first : {true, false}) {
            auto other = kHead + (first ? kSection + kGood : "") + text + (first ? "" : kSection + kGood);
            const auto seen = FindOrdered(other, piece);
            ASSERT_TRUE(!seen.ordered || seen.value == "C:\\T2");
        }
        for (int i = 0; i < 2'000; ++i)
            text[random() % text.size()] = "\n[]\\\"x"[random() % 6];
        FindOrdered(text, piece);
    }
    std::string large = kHead;
    for (int i = 100'000; i < 150'000; ++i)
        large += "[Software\\\\a" + std::to_string(i) + "] 1\n\"Name\"=\"text\"\n\n";
    std::size_t bytes = 0;
    EXPECT_EQ(FindOrdered(large + kSection + kGood, 4096, &bytes).value, "C:\\T2");
    EXPECT_LT(bytes, large.size() / 5);
    EXPECT_TRUE(FindOrdered("REGEDIT4\n" + large, 4096).ordered);
}

} // namespace
} // namespace quillbay
