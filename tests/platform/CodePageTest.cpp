#include "platform/CodePage.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay {

namespace {

TEST(CodePageTest, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    std::mt19937 random(7);
    for (int round = 0; round < 2'000; ++round) {
        const auto encoded = EncodeSystemText(DecodeSystemText(all));
        ASSERT_FALSE(encoded.unencodable);
        ASSERT_EQ(encoded.bytes, all);
        all.resize(std::uniform_int_distribution<std::size_t>(0, 64)(random));
        for (char& byte : all)
            byte = static_cast<char>(random());
    }
}

} // namespace

} // namespace quillbay
