#include "effects/FadeSteps.h"

#include <climits>
#include <gtest/gtest.h>

namespace quillbay {
namespace {

using Steps = std::vector<int>;
constexpr PixelSize kMain{457, 410};
constexpr PixelSize kQuarter{457, 102};

TEST(FadeSteps, RoundTheirStepDownOnTheWayInAndUpOnTheWayOut) {
    EXPECT_EQ(FadeInSteps(0, 127, kMain, kMain), (Steps{1, 128, 255}));
    EXPECT_EQ(FadeInSteps(3, 5, kQuarter, kMain), (Steps{1, 2, 3}));
    EXPECT_EQ(FadeOutSteps(3, 5, kQuarter, kMain), (Steps{3, 1}));
    EXPECT_TRUE(FadeOutSteps(0, 30, kMain, kMain).empty());
}

TEST(FadeSteps, AreasOfAnySizeGiveStepsWithoutOverflow) {
    EXPECT_EQ(FadeOutSteps(255, 255, {INT_MAX, INT_MAX}, {1, 1}), Steps{255});
    EXPECT_EQ(FadeInSteps(255, 1, {0, 0}, kMain).size(), 255U);
    EXPECT_EQ(FadeOutSteps(255, 100, kMain, {0, 0}), (Steps{255, 155, 55}));
    EXPECT_EQ(FadeOutSteps(2, 0, {0, 0}, {0, 0}), (Steps{2, 1}));
}

TEST(FadeSteps, FadeBetweenGoesBothWays) {
    EXPECT_EQ(FadeBetweenSteps(237, 100, 7).back(), 104);
    EXPECT_EQ(FadeBetweenSteps(5, 30, 0), (Steps{5, 15, 25}));
    EXPECT_EQ(FadeBetweenSteps(7, 7, INT_MAX), Steps{7});
}

TEST(SmoothCloseSizes, HeightShrinksBeforeWidth) {
    using Sizes = std::vector<PixelSize>;
    EXPECT_EQ(SmoothCloseSizes({4, 3}, {}), (Sizes{{4, 2}, {4, 1}, {3, 1}, {2, 1}, {1, 1}}));
    EXPECT_EQ(SmoothCloseSizes({3, 4}, {true, true, true}), (Sizes{{2, 3}, {1, 2}, {1, 1}}));
    EXPECT_TRUE(SmoothCloseSizes({4, 3}, {false, false, true}).empty());
}

} // namespace
} // namespace quillbay
