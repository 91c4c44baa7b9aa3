#include "odf/OdfLines.h"

#include <gtest/gtest.h>
#include <vector>

namespace quillbay {
namespace {

/// Pairs of a line and its value; "-" where the reader must pass the line over.
template <typename Reader>
void Expect(Reader reader, const std::vector<std::string>& pairs) {
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        const auto value = reader(std::string_view(pairs[at]));
        EXPECT_EQ(value ? std::string(*value) : "-", pairs[at + 1]) << pairs[at];
    }
}

TEST(OdfLines, EachReaderTakesItsOwnLinesOnly) {
    Expect(IncludedOdf,
           {R"(#include "a.odf")", "a.odf", R"(#include "a.odf" )", "a.odf\"", "#include \"a\u00E9", "a",
            "#include \"", "", "#Include \"a\"", "-", "#include  \"a\"", "-", " #include \"a\"", "-"});
    Expect(WeaponOdf,
           {"weapon1 = \"gun\"", "gun.odf", "WEAPON12 = \"a.odf\"", "a.odf.odf", "weapon1 = \"\"", ".odf",
            "weapon007x = \"a\"", "a.odf", "weapon1=\"a\"", "a.odf", "weapon1 = gun", "-"});
    Expect(WeaponOdf,
           {"weapon0 = \"a\"", "-", "weapon = \"1\"", "-", "weapon 1 = \"a\"", "-", "weapon+1 = \"a\"", "-"});
    Expect(WeaponOdf, {"weapon0001 = \"a\"", "-", "weaponHardpoints1 = \"a\"", "-", " weapon1 = \"a\"", "-"});
    Expect(TooltipValue, {"tooltip = \"A Ship\"  ", "\"a ship\"", "ToolTip = ", "", "tooltip =", "",
                          "tooltip =\"x\"", "x\"", "tooltip=\"x\"", "-", "verbosetooltip = \"x\"", "-"});
    Expect(BuildItemOdf,
           {"builditem1 = \"scout\"", "scout.odf", "BuildItem9 = \"scout.odf\"", "scout.odf",
            "builditem1 = \"a.ODF\"", "a.ODF.odf", "builditem1 = \"a\" ", "a\".odf", "builditem = \"a = b\"",
            ".odf", "builditem1 = \u00E9\u00E9", ".odf", "builditem1 = ", "odf", "builditem1 =\"a\"", "-"});
}

} // namespace
} // namespace quillbay
