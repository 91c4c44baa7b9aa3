#include "catalogue/LooseFileSorter.h"
#include "common/PathText.h"
#include "platform/CaseFold.h"
#include "support/DiskTest.h"
#include "support/ListingFileSystem.h"

#include <algorithm>
#include <map>

namespace quillbay {
namespace {

class LooseFileTypes : public test::DiskTest {};

struct Case {
    std::string name;
    std::string types; ///< all types that list it, joined with `+`
    std::string bytes = {};
};

const std::string kShip = "#include \"battle1.odf\"";
const std::string kPiece(1024 * 1024, ' ');

const std::vector<Case> kCases = {
    {"a.bzn", "Bzn"},
    {"B.BZN", "Bzn"},
    {"a.bzn.txt", ""},
    {"abzn", ""},
    {"bzn", ""},
    {"a.tga", R"(Textures\Rgb)"},
    {"a.tt", "Techtree"},
    {"tt", ""},
    {"a.spr", "Sprites"},
    {"a.wav", ""},
    {"Mnebula3.SOD", R"(Sod\Software)"},
    {"wstoptim.sod", R"(Sod\Software)"},
    {"mnebula6.sod", "Sod"},
    {"amnebula3.sod", "Sod"},
    {"t2a.txt", "Objectives"},
    {"T2.TXT", "Objectives"},
    {"at2.txt", ""},
    {"a.drl", "Missions"},
    {"a.dsl", "Missions"},
    {"a.aip", R"(Ai\Aips)"},
    {"Strategic_AI_config.txt", "Ai"},
    {"strategic_ai_config2.txt", ""},
    {"t2x.bik", "Animations"},
    {"intro.bik", "Animations"},
    {"FerrowindSoftware.bik", "Animations"},
    {"halcyra.bik", ""},
    {"Brightgate.bik", ""},
    {"x.bik", ""},
    {"Pair.bmp", "ShipImages"},
    {"alone.bmp", ""},
    {"pair.ODF", "", "no include line"},
    {"super.odf", R"(Odf\Ships)", "x\r\n  #INCLUDE \"Battle1.odf\"  \rrest"},
    {"two.odf", R"(Odf\Ships+Odf\Commands)", "#include \"cargo.odf\"\r\n#include \"trade.odf\"\r\n"},
    {"pod2.odf", R"(Odf\Stations)", "#include \"lifesupportupgradepod2.odf\""},
    {"gap.odf", "", "#include  \"battle1.odf\""},
    {"tab.odf", "", "\t#include \"battle1.odf\""},
    {"after.odf", "", kShip + " // ship"},
    {"unknown.odf", "", "#include \"battle3.odf\"\r#include \".odf\"\r#include \"odf\""},
    {"lf.odf", "", "x\n" + kShip + "\n"},
    {"ship.txt", "", kShip},
    {"BigPhas.odf", R"(Odf\Ships+Odf\Weapons\Phasers)", kShip},
    {"phas.txt", ""},
    {"aphot.odf", R"(Odf\Weapons\Photons)"},
    {"artillery.odf", R"(Odf\Weapons\Photons)"},
    {"plasma.odf", R"(Odf\Weapons\Photons)"},
    {"phaplas_phas_pulse.odf", R"(Odf\Weapons\Phasers+Odf\Weapons\Photons+Odf\Weapons\Pulse)"},
    // Lines and line ends where one piece that is read ends and the next begins.
    {"across.odf", R"(Odf\Ships)", kPiece.substr(9) + "\r" + kShip},
    {"split.odf", R"(Odf\Ships)", kPiece.substr(1) + "\r\n" + kShip},
    {"zeros.odf", "", std::string(3 * kPiece.size(), '\0') + kShip},
    {"late.odf", R"(Odf\Ships)", std::string(3 * kPiece.size(), '\0') + "\r\n" + kShip},
};

TEST_F(LooseFileTypes, EachRuleTakesItsFilesAndNoOthers) {
    class ReadCounter : public test::ListingFileSystem {
    public:
        using ListingFileSystem::ListingFileSystem;
        Result<std::string> Read(std::string_view file, std::uint64_t offset,
                                 std::size_t most) const override {
            reads += offset == 0;
            return Base().Read(file, offset, most);
        }
        mutable std::ptrdiff_t reads = 0;
    } files(*disk_);

    for (const auto& [name, types, bytes] : kCases)
        test::PutFile(temp_ / name, bytes);
    test::PutFile(temp_ / "odf/nested.bzn", "");
    const auto loose = ListLooseFiles(files, temp_.Path());

    std::map<std::string, std::string> found;
    for (const auto& name : loose.names)
        found[name];
    for (std::size_t type = 0; type < kLooseFileTypeCount; ++type)
        for (const auto& file : loose.byType[type]) {
            auto& types = found[loose.names[file.number]];
            types += (types.empty() ? "" : "+") + std::string(quillbay::LooseFileTypes[type].name);
            EXPECT_TRUE(file.flagged);
        }
    EXPECT_EQ(found.size(), kCases.size());
    for (const auto& [name, types, bytes] : kCases)
        EXPECT_EQ(found[name], types) << name;
    EXPECT_EQ(files.reads, std::ranges::count_if(loose.names, [](auto& n) { return EndsIn(n, ".odf"); }));
}

TEST_F(LooseFileTypes, EveryDestinationIsAKnownFolderAndEveryTypeHasHelp) {
    for (const auto& type : quillbay::LooseFileTypes) {
        EXPECT_TRUE(std::ranges::any_of(GameFolders, [&](auto one) {
            return EqualFolded(one, type.destination);
        })) << type.destination;
        // The help names the destination in a spelling of its own.
        EXPECT_TRUE(LooseFileHelp(FoldCase(type.name)).value().ends_with(type.copiedTo));
        EXPECT_TRUE(EqualFolded(Join(type.copiedTo, "\\"), type.destination)) << type.name;
    }
    EXPECT_EQ(LooseFileHelp("odf\\ships"),
              "Files included: *.odf with '#included \"(various things)\"'\nCopied to: odf\\Ships");
    EXPECT_FALSE(LooseFileHelp("(None)"));
}

} // namespace
} // namespace quillbay
