#include "catalogue/LooseFileSorter.h"
#include "platform/CaseFold.h"
#include "support/DiskTest.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace quillbay {
namespace {

class LooseFileTypes : public test::DiskTest {};

/// Files by all the types that list them, joined with `+`. ODF files hold nothing.
const std::multimap<std::string, std::string> kByName = {
    {"", "a.bzn.txt abzn bzn tt a.wav strategic_ai_config2.txt at2.txt Intro.bik halcyra.bik x.bik"},
    {"", "alone.bmp pair.ODF phas.txt a.odf mnebula1.sod.odf"},
    {"Bzn", "a.bzn B.BZN"},
    {R"(Textures\Rgb)", "a.tga"},
    {"Techtree", "a.tt"},
    {"Sprites", "a.spr"},
    {R"(Sod\Software)", "Mnebula3.SOD wstoptim.sod"},
    {"Sod", "mnebula6.sod amnebula3.sod"},
    {"Objectives", "t2a.txt T2.TXT"},
    {"Missions", "a.drl a.dsl"},
    {R"(Ai\Aips)", "a.aip"},
    {"Ai", "Strategic_AI_config.txt"},
    {"Animations", "t2x.bik FerrowindSoftware.bik brightgate.bik"},
    {"ShipImages", "Pair.bmp"},
    {R"(Odf\Weapons\Phasers)", "aPHASer.odf"},
    {R"(Odf\Weapons\Photons)", "aphot.odf artillery.odf plasma.odf"},
    {R"(Odf\Weapons\Phasers+Odf\Weapons\Photons+Odf\Weapons\Pulse)", "phas_plas_pulse.odf"}};

const std::string kShip = "#include \"battle1.odf\"";
const std::string kPiece(1024 * 1024, ' '); ///< as much as is read at a time
const std::string kZeros(3 * kPiece.size(), '\0');
/// ODF files by what is in them.
const std::multimap<std::string, std::string> kByBytes = {
    {R"(Odf\Ships)", "x\r\n  #INCLUDE \"Battle1.odf\"  \rrest"},
    {R"(Odf\Ships)", kPiece.substr(9) + "\r" + kShip},
    {R"(Odf\Ships)", kPiece.substr(1) + "\r\n" + kShip},
    {R"(Odf\Ships)", kZeros + "\r\n" + kShip},
    {R"(Odf\Stations+Odf\Commands)", "#include \"pod.odf\"\r\n#include \"trade.odf\"\r\n"},
    {"", "#include  \"battle1.odf\"\r\t#include \"battle1.odf\"\rx\n" + kShip + "\n\r" + kShip + " // ship"},
    {"", "#include \"battle3.odf\"\r#include \".odf\"\r#include \"odf\""},
    {"", kZeros + kShip}};

TEST_F(LooseFileTypes, EachRuleTakesItsFilesAndNoOthers) {
    std::map<std::string, std::string> expected;
    std::map<std::string, std::string> found;
    const auto put = [&](const std::string& name, const std::string& types, const std::string& bytes) {
        expected[name] = types;
        test::PutFile(temp_ / name, bytes);
    };
    for (const auto& [types, names] : kByName) {
        std::istringstream all(names);
        for (std::string name; all >> name;)
            put(name, types, EndsIn(name, ".odf") ? "" : kShip);
    }
    for (const auto& [types, bytes] : kByBytes)
        put(std::to_string(expected.size()) + ".odf", types, bytes);
    put("Phas.odf", R"(Odf\Ships+Odf\Weapons\Phasers)", kShip);
    test::PutFile(temp_ / "odf/nested.bzn", "");

    const auto loose = ListLooseFiles(*disk_, temp_.Path());
    for (const auto& name : loose.names)
        found[name];
    for (std::size_t at = 0; at < kLooseFileTypeCount; ++at) {
        const auto& type = quillbay::LooseFileTypes[at];
        for (const auto& file : loose.byType[at]) {
            auto& types = found[loose.names[file.number]];
            types += (types.empty() ? "" : "+") + std::string(type.name);
        }
        const auto isDestination = [&](auto folder) { return EqualFolded(folder, type.destination); };
        EXPECT_TRUE(std::ranges::any_of(GameFolders, isDestination)) << type.name;
        EXPECT_TRUE(isDestination(std::string(type.copiedTo) + "\\")) << type.name;
    }
    EXPECT_EQ(found, expected);
}

} // namespace
} // namespace quillbay
