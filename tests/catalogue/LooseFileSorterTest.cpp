#include "catalogue/LooseFileSorter.h"

#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace quillbay {
namespace {

using Fault = FaultyFileSystem::Fault;
using Tree =
    std::map<std::string, std::string>; ///< path with `/`: bytes; that of an empty folder ends in `/`

const std::string kShip = "#include \"craft.odf\"";
const Tree kBefore = {{"A.BZN", "new a"},       {"bzn/a.bzn", "old a"},      {"b.bzn", "b"},
                      {"c.bzn", "new c"},       {"bzn/c.bzn", "old c"},      {"d.bzn", "d"},
                      {"bzn/d.bzn/", ""},       {"phas.odf", kShip},         {"PHAS.bmp", "picture"},
                      {"Sprites/x/y", "hers"},  {"readme.txt", ""},          {"odf/weapons/pulse/", ""},
                      {"x_pulse.odf", "pulse"}, {"odf/weapons/PHOTONS/", ""}};
const Tree kAfter = {{"bzn/A.BZN", "new a"},
                     {"bzn/b.bzn", "b"},
                     {"bzn/c.bzn", "new c"},
                     {"d.bzn", "d"},
                     {"bzn/d.bzn/", ""},
                     {"bitmaps/AdmiralsLog/ShipImages/PHAS.bmp", "picture"},
                     {"odf/ships/phas.odf", kShip},
                     {"odf/weapons/pulse/x_pulse.odf", "pulse"},
                     {"Sprites/x/y", "hers"},
                     {"readme.txt", ""}};

class LooseFileSorter : public testing::Test {
protected:
    void Put(const Tree& tree) {
        std::filesystem::remove_all(test::DiskPath(mod_));
        for (const auto& [path, bytes] : tree)
            path.ends_with('/') ? test::PutFolder(mod_ + '/' + path)
                                : test::PutFile(mod_ + '/' + path, bytes);
    }
    static SortResult Sort(FileSystem& files, const LooseFiles& loose, TypeChecks checks = ~TypeChecks()) {
        return RunSorting(files, PlanSorting(files, loose, checks));
    }
    /// A file that was to be spelled `A.BZN` counts as spelled so.
    Tree State() const {
        Tree tree;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(test::DiskPath(mod_))) {
            auto path = entry.path().lexically_relative(test::DiskPath(mod_)).generic_string();
            if (path == "bzn/a.bzn") path = "bzn/A.BZN";
            if (!entry.is_directory())
                tree[path] = test::FileBytes(entry.path().string());
            else if (std::filesystem::is_empty(entry))
                tree[path + '/'];
        }
        return tree;
    }
    static std::string At(const Tree& tree, const std::string& path) {
        const auto found = tree.find(path);
        return found == tree.end() ? "(none)" : found->second;
    }
    bool SortWith(std::size_t number, Fault fault, bool hardLinks);

    const test::TempFolder temp_;
    const std::string mod_ = temp_ / "mod";
    const std::unique_ptr<FileSystem> disk_ = MakeFileSystem();
};

TEST_F(LooseFileSorter, TakesOnlyWhatIsCheckedFlaggedAndStillThere) {
    Put({{"a.bmp", ""}, {"a.odf", kShip}, {"b.bmp", ""}, {"b.odf", ""}, {"c_phas.odf", kShip}});
    auto loose = ListLooseFiles(*disk_, mod_);
    for (auto& file : loose.byType[7])
        file.flagged = loose.names[file.number] == "a.odf";
    Put({{"a.bmp", ""}, {"a.odf", kShip}, {"b.bmp", ""}, {"c_phas.odf", kShip}, {"later.bzn", ""}});
    EXPECT_EQ(Sort(*disk_, loose, ~TypeChecks().set(10)).moved, 2U);
    const auto state = State();
    EXPECT_TRUE(state.contains("odf/ships/a.odf") && state.contains("b.bmp") && state.contains("later.bzn") &&
                state.contains("c_phas.odf"));

    loose.folder += "-gone";
    EXPECT_EQ(Sort(*disk_, loose).notMoved.size(), 4U);
    loose.folder.clear();
    Sort(*disk_, loose);
    EXPECT_EQ(State(), state);
}

/// Sorts with a fault at the `number`-th operation; false when there are not as many.
bool LooseFileSorter::SortWith(std::size_t number, Fault fault, bool hardLinks) {
    SCOPED_TRACE(testing::Message() << "fault " << int(fault) << " at " << number << ", " << hardLinks);
    Put(kBefore);
    const Tree before = State();
    FaultyFileSystem files(*disk_);
    if (!hardLinks) files.ForbidHardLinks();
    const auto loose = ListLooseFiles(files, mod_);
    files.Arm(number, fault);
    const auto result = Sort(files, loose);
    const Tree state = State();
    for (const auto& [target, bytes] : kAfter) {
        const auto name = target.substr(target.rfind('/') + 1);
        if (name == target || !kBefore.contains(name)) continue;
        const bool stays = At(state, name) == bytes;
        const bool isAsBefore = At(state, target) == At(before, target);
        EXPECT_TRUE((stays && isAsBefore) || At(state, target) == bytes) << name;
        if (fault == Fault::Fail) {
            EXPECT_EQ(stays, isAsBefore) << name;
            EXPECT_EQ(stays, std::ranges::count(result.notMoved, name)) << name;
        }
    }
    const bool isMet = files.Trace().size() >= number;
    if (!isMet) {
        EXPECT_EQ(result.moved, 6U);
        EXPECT_EQ(result.notMoved, std::vector<std::string>{"d.bzn"});
        EXPECT_EQ(disk_->Stat(mod_ + "/bzn/A.BZN")->name, "A.BZN");
    }
    // After a failure a picture can stay without its ODF file, and an empty folder lose its spelling.
    if (isMet && fault == Fault::Fail) return true;
    Sort(*disk_, ListLooseFiles(*disk_, mod_));
    EXPECT_EQ(State(), kAfter);
    return isMet;
}

TEST_F(LooseFileSorter, LosesNothingWhateverFailsOrEnds) {
    for (const bool hardLinks : {true, false})
        for (const Fault fault : {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndTempWhole,
                                  Fault::EndSwapped, Fault::EndAfter})
            for (std::size_t number = 1; SortWith(number, fault, hardLinks);)
                number += QUILLBAY_SWEEP_STRIDE;
}

} // namespace
} // namespace quillbay
