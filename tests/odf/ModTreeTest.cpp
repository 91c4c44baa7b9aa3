#include "odf/ModTree.h"

#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

class ModTreeTest : public DiskTest {};

/// The tree as one text: "Mods(A(odf(ships)),B)".
std::string Outline(const TreeFolder& folder) {
    std::string below;
    for (const TreeFolder& child : folder.children)
        below += (below.empty() ? "" : ",") + Outline(child);
    return folder.text + (below.empty() ? "" : "(" + below + ")");
}

TEST_F(ModTreeTest, ShowsKnownFoldersOfModsOnly) {
    EXPECT_EQ(Outline(ReadModTree(*disk_, temp_.Path(), {})), "Mods");
    PutFolder(temp_ / "mods\\(No mods found.)\\odf");
    PutFolder(temp_ / "mods\\Case\\ODF\\Weapons\\PULSE");
    PutFolder(temp_ / "mods\\Case\\unknown\\odf");
    PutFolder(temp_ / "mods\\Case\\bitmaps\\AdmiralsLog\\Buttons");
    PutFolder(temp_ / "mods\\Case\\Logs");
    PutFolder(temp_ / "mods\\Case\\Addon\\Extra\\odf");
    PutFile(temp_ / "mods\\Case\\Textures", "a file");
    PutFolder(temp_ / "mods\\Empty");
    PutFolder(temp_ / "mods\\Mods\\Textures\\Rgb");

    const TreeFolder tree = ReadModTree(*disk_, temp_.Path(), ScanModLibrary(*disk_, temp_ / "mods"));
    EXPECT_EQ(Outline(tree), "Mods(Case(bitmaps(AdmiralsLog(buttons)),logs,odf(weapons(Pulse))),Empty,"
                             "Mods(Textures(Rgb)))");
    const TreeFolder& pulse = tree.children[0].children[2].children[0].children[0];
    EXPECT_EQ(pulse.folders, std::vector{temp_ / "mods\\Case\\ODF\\Weapons\\PULSE"});
}

} // namespace
} // namespace quillbay::test
