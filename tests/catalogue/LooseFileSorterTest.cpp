#include "catalogue/LooseFileSorter.h"

#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quillbay {
namespace {

using Fault = FaultyFileSystem::Fault;

const std::string kShip = "#include \"craft.odf\"";
const std::map<std::string, std::string> kMoves = {{"A.BZN", "bzn/A.BZN"},
                                                   {"b.bzn", "bzn/b.bzn"},
                                                   {"c.bzn", "bzn/c.bzn"},
                                                   {"PHAS.bmp", "bitmaps/AdmiralsLog/ShipImages/PHAS.bmp"},
                                                   {"phas.odf", "odf/ships/phas.odf"},
                                                   {"x_pulse.odf", "odf/weapons/pulse/x_pulse.odf"}};

class LooseFileSorter : public testing::Test {
protected:
    void Put(std::initializer_list<const char*> names, const std::string& bytes) {
        for (const char* name : names)
            lab_->Put(std::string("mods/One/") + name, bytes + name);
    }
    LooseFiles List() { return ListLooseFiles(lab_->Files(), lab_->Job("One").ModFolder()); }
    static SortResult Sort(FileSystem& files, const LooseFiles& loose, TypeChecks checks = ~TypeChecks()) {
        return RunSorting(files, PlanSorting(files, loose, checks));
    }
    /// A file that was to be spelled `A.BZN` counts as spelled so.
    TreeState State() const {
        auto state = lab_->State("mods/One");
        if (auto file = state.extract("bzn/a.bzn")) state["bzn/A.BZN"] = file.mapped();
        return state;
    }
    bool SortWith(std::size_t number, Fault fault, bool hardLinks);

    std::optional<InstallLab> lab_ = std::make_optional<InstallLab>();
};

TEST_F(LooseFileSorter, TakesOnlyWhatIsCheckedFlaggedAndStillThere) {
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

/// Sorts with a fault at the `number`-th operation; false when there are not as many.
bool LooseFileSorter::SortWith(std::size_t number, Fault fault, bool hardLinks) {
    SCOPED_TRACE(testing::Message() << "fault " << int(fault) << " at " << number << ", " << hardLinks);
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
    if (!hardLinks) files.ForbidHardLinks();
    const auto loose = List();
    files.Arm(number, fault);
    const auto result = Sort(files, loose);

    auto state = State();
    for (const auto& [name, target] : kMoves) {
        const bool stays = state[name] == before.at(name);
        const bool isAsBefore =
            before.contains(target) ? state[target] == before.at(target) : state[target] == FileState();
        EXPECT_TRUE((stays && isAsBefore) || state[target] == before.at(name)) << name;
        if (fault != Fault::Fail) continue;
        EXPECT_EQ(stays, isAsBefore) << name;
        EXPECT_EQ(stays, std::ranges::count(result.notMoved, name)) << name;
    }
    const bool isMet = files.Trace().size() >= number;
    if (!isMet) {
        EXPECT_EQ(result.moved, kMoves.size());
        EXPECT_EQ(result.notMoved, std::vector<std::string>{"d.bzn"});
        EXPECT_TRUE(lab_->State("mods/One").contains("bzn/A.BZN"));
        EXPECT_FALSE(exists(lab_->Native("mods/One/odf/weapons/PHOTONS")));
    }
    // After a failure a picture can stay without the ODF file that it is told by.
    if (isMet && fault == Fault::Fail) return true;
    Sort(lab_->Files(), List());
    EXPECT_EQ(Differences(after, State()) + lab_->SharedFiles(), "");
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
