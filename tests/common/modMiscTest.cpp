#include "common/modMisc.h"

#include <cmath>

namespace quillbay {
namespace {

TEST(modMisc, ParseLeadingNumberReadsTheBeginningOfEveryMagnitude) {
    for (const auto& [text, number] : {std::pair<std::string, double>{"  - 2 3.5e1x9", -235},
                                       {"+.5E+2", 50},
                                       {"12e", 12},
                                       {"1,5", 1},
                                       {"-1e999999999999999999999", -HUGE_VAL},
                                       {std::string(400, '9'), HUGE_VAL},
                                       {"." + std::string(400, '0') + "1", 0},
                                       {"0e999", 0}})
        EXPECT_EQ(ParseLeadingNumber(text), number) << text;
    for (const char* none : {"", " ", "abc", "-", ".", "e5", "&H10", "inf", "nan"})
        EXPECT_EQ(ParseLeadingNumber(none), 0) << none;
}

} // namespace
} // namespace quillbay
