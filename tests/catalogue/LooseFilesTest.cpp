#include "catalogue/LooseFileSorter.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"
#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

namespace quillbay {
namespace {

using Fault = FaultyFileSystem::Fault;
using Names = std::vector<std::string>;

/// The types that list a file, each after a `+`, by its name; ODF files hold nothing.
const std::vector<std::pair<std::string, Names>> kByName = {
    {"", {"a.bzn.txt", "abzn", "bzn", "tt", "a.wav", "strategic_ai_config2.txt", "at2.txt", "Intro.bik"}},
    {"", {"halcyra.bik", "x.bik", "alone.bmp", "pair.ODF", "phas.txt", "a.odf", "mnebula1.sod.odf"}},
    {"+Bzn", {"a.bzn", "B.BZN"}},
    {R"(+Textures\Rgb)", {"a.tga"}},
    {"+Techtree", {"a.tt"}},
    {"+Sprites", {"a.spr"}},
    {R"(+Sod\Software)", {"Mnebula3.SOD", "wstoptim.sod"}},
    {"+Sod", {"mnebula6.sod", "amnebula3.sod"}},
    {"+Objectives", {"t2a.txt", "T2.TXT"}},
    {"+Missions", {"a.drl", "a.dsl"}},
    {R"(+Ai\Aips)", {"a.aip"}},
    {"+Ai", {"Strategic_AI_config.txt"}},
    {"+Animations", {"t2x.bik", "FerrowindSoftware.bik", "brightgate.bik"}},
    {"+ShipImages", {"Pair.bmp"}},
    {R"(+Odf\Weapons\Phasers)", {"aPHASer.odf"}},
    {R"(+Odf\Weapons\Photons)", {"aphot.odf", "artillery.odf", "plasma.odf"}},
    {R"(+Odf\Weapons\Phasers+Odf\Weapons\Photons+Odf\Weapons\Pulse)", {"phas_plas_pulse.odf"}}};

const std::string kShip = "#include \"craft.odf\"";
const std::string kPiece(1024 * 1024, ' '); ///< as much as is read at a time
const std::string kZeros(3 * kPiece.size(), '\0');
/// ODF files by what is in them.
const std::vector<std::pair<std::string, std::string>> kByBytes = {
    {R"(+Odf\Ships)", "x\r\n  #INCLUDE \"Battle1.odf\"  \rrest"},
    {R"(+Odf\Ships)", kPiece.substr(9) + "\r" + kShip},
    {R"(+Odf\Ships)", kPiece.substr(1) + "\r\n" + kShip},
    {R"(+Odf\Ships)", kZeros + "\r\n" + kShip},
    {R"(+Odf\Stations+Odf\Commands)", "#include \"pod.odf\"\r\n#include \"trade.odf\"\r\n"},
    {"", "#include  \"craft.odf\"\r\t#include \"craft.odf\"\rx\n" + kShip + "\n\r" + kShip + " // ship"},
    {"", "#include \"battle3.odf\"\r#include \".odf\"\r#include \"odf\""},
    {"", kZeros + kShip}};

/// What a whole sorting of the mod below moves; the picture before its ODF file.
const std::map<std::string, std::string> kMoves = {{"A.BZN", "bzn/A.BZN"},
                                                   {"b.bzn", "bzn/b.bzn"},
                                                   {"c.bzn", "bzn/c.bzn"},
                                                   {"PHAS.bmp", "bitmaps/AdmiralsLog/ShipImages/PHAS.bmp"},
                                                   {"phas.odf", "odf/ships/phas.odf"},
                                                   {"x_pulse.odf", "odf/weapons/pulse/x_pulse.odf"}};

class LooseFilesTest : public testing::Test {
protected:
    void Put(const Names& names, const std::string& bytes) {
        for (const std::string& name : names)
            lab_->Put("mods/One/" + name, bytes + name);
    }
    LooseFiles List() { return ListLooseFiles(lab_->Files(), lab_->Job("One").FolderInLibrary()); }
    SortResult Sort(FileSystem& files, const LooseFiles& loose, TypeChecks checks = ~TypeChecks()) const {
        return RunSorting(files, PlanSorting(files, loose, checks, lab_->Job("One").gameDirectory));
    }
    /// A file that was to be spelled `A.BZN` counts as spelled so.
    TreeState State() const {
        auto state = lab_->State("mods/One");
        if (auto file = state.extract("bzn/a.bzn")) state["bzn/A.BZN"] = file.mapped();
        return state;
    }
    std::string SortWith(std::size_t number, Fault fault, bool hardLinks);

    std::optional<InstallLab> lab_ = std::make_optional<InstallLab>();
};

TEST_F(LooseFilesTest, EachTypeTakesItsFilesAndNoOthers) {
    std::map<std::string, std::string> expected{{"Phas.odf", R"(+Odf\Ships+Odf\Weapons\Phasers)"}};
    Put({"Phas.odf", "odf/nested.bzn"}, kShip + "\r");
    for (const auto& [types, names] : kByName) {
        for (const auto& name : names) {
            expected[name] = types;
            Put({name}, EndsFolded(name, ".odf") ? "" : kShip + "\r");
        }
    }
    for (const auto& [types, bytes] : kByBytes) {
        const std::string name = std::to_string(expected.size()) + ".odf";
        expected[name] = types;
        lab_->Put("mods/One/" + name, bytes);
    }

    const auto loose = List();
    std::map<std::string, std::string> found;
    for (const auto& name : loose.names)
        found[name];
    for (std::size_t at = 0; at < kLooseFileTypeCount; ++at) {
        const auto& type = LooseFileTypes[at];
        for (const auto& file : loose.byType[at])
            found[loose.names[file.number]] += "+" + std::string(type.name);
        EXPECT_LT(PositionOfFolder(type.destination), kKnownFolderCount) << type.name;
        EXPECT_TRUE(EqualFolded(std::string(type.copiedTo) + "\\", type.destination)) << type.name;
    }
    EXPECT_EQ(found, expected);
}

TEST_F(LooseFilesTest, OnlyWhatIsCheckedFlaggedAndStillThereIsSorted) {
    Put({"a.bmp", "a.odf", "b.bmp", "b.odf", "c_phas.odf"}, kShip + "\r");
    auto loose = List();
    for (auto& file : loose.byType[7])
        file.flagged = loose.names[file.number] == "a.odf";
    lab_->Remove("mods/One/b.odf");
    Put({"later.bzn"}, "");
    EXPECT_EQ(Sort(lab_->Files(), loose, ~TypeChecks().set(10)).moved, 2U);
    const auto state = State();
    for (const char* path : {"odf/ships/a.odf", "b.bmp", "later.bzn", "c_phas.odf"})
        EXPECT_TRUE(state.contains(path)) << path;

    loose.folder += "-gone";
    EXPECT_EQ(Sort(lab_->Files(), loose).notMoved.size(), 4U);
    loose.folder.clear();
    Sort(lab_->Files(), loose);
    EXPECT_EQ(Differences(state, State()), "");
}

/// Sorts with a fault at the `number`-th operation; the trace of the operations.
std::string LooseFilesTest::SortWith(std::size_t number, Fault fault, bool hardLinks) {
    SCOPED_TRACE(hardLinks);
    lab_.emplace();
    Put({"A.BZN", "bzn/a.bzn", "b.bzn", "c.bzn", "bzn/c.bzn", "d.bzn", "bzn/d.bzn/inside", "PHAS.bmp",
         "x_pulse.odf", "odf/weapons/pulse/old.odf", "Sprites/x/hers", "readme.txt", "odf/weapons/PHOTONS/x"},
        "");
    Put({"phas.odf"}, kShip + "\r");
    lab_->Remove("mods/One/odf/weapons/PHOTONS/x");
    const TreeState before = State();
    TreeState after = before;
    for (const auto& [name, target] : kMoves) {
        after[target] = before.at(name);
        after.erase(name);
    }
    FaultyFileSystem files(lab_->Files());
    files.hook = [hardLinks](auto operation, auto path, auto to) {
        // What is moved must be on the disk before it leaves its place; another volume has no links either.
        EXPECT_NE(operation, "Copy") << path;
        const bool isOther = operation == "Rename" && Parent(path) != Parent(to);
        return std::make_error_code(hardLinks                 ? std::errc()
                                    : isOther                 ? std::errc::cross_device_link
                                    : operation == "HardLink" ? std::errc::operation_not_supported
                                                              : std::errc());
    };
    const auto loose = List();
    files.Arm(number, fault);
    const auto result = Sort(files, loose);

    auto state = State();
    for (const auto& [name, target] : kMoves) {
        const bool stays = state[name] == before.at(name);
        const auto old = before.find(target);
        const bool isAsBefore = state[target] == (old == before.end() ? FileState() : old->second);
        EXPECT_TRUE((stays && isAsBefore) || state[target] == before.at(name)) << name;
        if (fault != Fault::Fail) continue;
        EXPECT_EQ(stays, isAsBefore) << name;
        EXPECT_EQ(stays, std::ranges::count(result.notMoved, name)) << name;
    }
    if (fault == Fault::None) {
        EXPECT_EQ(result.moved, kMoves.size());
        EXPECT_EQ(result.notMoved, Names{"d.bzn"});
        EXPECT_TRUE(lab_->State("mods/One").contains("bzn/A.BZN"));
        EXPECT_FALSE(exists(lab_->Native("mods/One/odf/weapons/PHOTONS")));
    }
    // After a failure a picture can stay without the ODF file that it is told by.
    if (fault == Fault::Fail) return files.Trace();
    Sort(lab_->Files(), List());
    EXPECT_EQ(Differences(after, State()) + lab_->SharedFiles(), "");
    return files.Trace();
}

TEST_F(LooseFilesTest, AnOldFileThatCannotComeBackKeepsItsSecondName) {
    Put({"a.bzn", "bzn/a.bzn"}, "");
    FaultyFileSystem files(lab_->Files());
    int removals = 0;
    files.hook = [&](auto operation, auto, auto) {
        const bool is = operation == "RemoveFile" ? removals++ == 0 : removals > 0 && operation != "Rename";
        return std::make_error_code(is ? std::errc::io_error : std::errc());
    };
    Sort(files, List());
    EXPECT_GT(removals, 0);
    EXPECT_TRUE(std::ranges::any_of(lab_->Read("mods/One"),
                                    [](const auto& file) { return file.second == "bzn/a.bzn"; }));
}

TEST_F(LooseFilesTest, NothingIsLostWhateverFailsOrEnds) {
    for (const bool hardLinks : {true, false})
        SweepFaults(SortWith(0, Fault::None, hardLinks),
                    {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndTempWhole,
                     Fault::EndSwapped, Fault::EndAfter},
                    [&](std::size_t number, Fault fault) { SortWith(number, fault, hardLinks); });
}

} // namespace
} // namespace quillbay
