#include "catalogue/LooseFileSorter.h"

#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace quillbay {
namespace {

using Tree = std::map<std::string, std::string>; ///< path with `/`: bytes; a folder's path ends in `/`

/// A mod in a temporary folder.
class Mod {
public:
    explicit Mod(const Tree& tree) {
        for (const auto& [path, bytes] : tree) {
            if (path.ends_with('/'))
                test::PutFolder(temp_ / path);
            else
                test::PutFile(temp_ / path, bytes);
        }
    }

    SortResult Sort(FileSystem& files, TypeChecks checks = TypeChecks().set()) const {
        return Sort(files, ListLooseFiles(files, temp_.Path()), checks);
    }
    static SortResult Sort(FileSystem& files, const LooseFiles& loose, TypeChecks checks) {
        return RunSorting(files, PlanSorting(files, loose, checks));
    }
    const std::string& Path() const { return temp_.Path(); }
    Tree State() const {
        Tree tree;
        const auto root = test::DiskPath(temp_.Path());
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            const auto path = entry.path().lexically_relative(root).generic_string();
            if (entry.is_directory())
                tree[path + '/'];
            else
                tree[path] = test::FileBytes(entry.path().string());
        }
        std::erase_if(tree, [&](const auto& one) { // folders that the paths of their files tell
            const auto below = tree.upper_bound(one.first);
            return one.first.ends_with('/') && below != tree.end() && below->first.starts_with(one.first);
        });
        return tree;
    }

private:
    test::TempFolder temp_;
};

const std::string kShip = "#include \"craft.odf\"";
const Tree kBefore = {
    {"A.BZN", "new a"},       {"bzn/a.bzn", "old a"},       {"b.bzn", "b"},
    {"c.bzn", "new c"},       {"bzn/c.bzn", "old c"},       {"d.bzn", "d"},
    {"bzn/d.bzn/", ""},       {"phas.odf", kShip},          {"PHAS.bmp", "picture"},
    {"Sprites/x/y", "hers"},  {"readme.txt", ""},           {"odf/weapons/pulse/", ""},
    {"x_pulse.odf", "pulse"}, {"odf/weapons/PHOTONS/", ""},
};
const Tree kAfter = {
    {"bzn/A.BZN", "new a"},
    {"bzn/b.bzn", "b"},
    {"bzn/c.bzn", "new c"},
    {"d.bzn", "d"},
    {"bzn/d.bzn/", ""},
    {"odf/ships/phas.odf", kShip},
    {"bitmaps/AdmiralsLog/ShipImages/PHAS.bmp", "picture"},
    {"Sprites/x/y", "hers"},
    {"readme.txt", ""},
    {"odf/weapons/pulse/x_pulse.odf", "pulse"},
};

TEST(LooseFileSorter, MovesAndReplacesAndTidies) {
    const auto disk = MakeFileSystem();
    const Mod mod(kBefore);
    const auto result = mod.Sort(*disk);
    EXPECT_EQ(mod.State(), kAfter);
    EXPECT_EQ(result.moved, 6U);
    EXPECT_EQ(result.notMoved, std::vector<std::string>{"d.bzn"});
    EXPECT_EQ(mod.Sort(*disk).moved, 0U);
    EXPECT_EQ(mod.State(), kAfter);
}

TEST(LooseFileSorter, TakesOnlyWhatIsCheckedFlaggedAndStillThere) {
    const auto disk = MakeFileSystem();
    const Mod mod({{"a.bmp", ""}, {"a.odf", kShip}, {"b.bmp", ""}, {"b.odf", ""}, {"c_phas.odf", kShip}});
    auto loose = ListLooseFiles(*disk, mod.Path());
    auto checks = TypeChecks().set();
    for (std::size_t type = 0; type < kLooseFileTypeCount; ++type)
        for (auto& file : loose.byType[type])
            file.flagged = LooseFileTypes[type].name != R"(Odf\Ships)" || loose.names[file.number] == "a.odf";
    std::filesystem::remove(test::DiskPath(mod.Path() + "/b.odf"));
    test::PutFile(mod.Path() + "/later.bzn", "");
    EXPECT_EQ(mod.Sort(*disk, loose, checks.reset(10)).moved, 2U);
    EXPECT_EQ(mod.State(), (Tree{{"bitmaps/AdmiralsLog/ShipImages/a.bmp", ""},
                                 {"odf/ships/a.odf", kShip},
                                 {"b.bmp", ""},
                                 {"c_phas.odf", kShip},
                                 {"later.bzn", ""}}));
    EXPECT_EQ(mod.Sort(*disk, loose, checks.set()).moved, 1U);
    EXPECT_TRUE(mod.State().contains("odf/weapons/Phasers/c_phas.odf"));

    std::filesystem::rename(test::DiskPath(mod.Path()), test::DiskPath(mod.Path() + "-gone"));
    EXPECT_EQ(mod.Sort(*disk, loose, checks).notMoved.size(), 4U);
    std::filesystem::rename(test::DiskPath(mod.Path() + "-gone"), test::DiskPath(mod.Path()));
    EXPECT_EQ(mod.Sort(*disk, LooseFiles{}, checks).moved, 0U);
}

/// Without the last step of a move that replaces another spelling.
Tree Respelled(Tree tree) {
    if (auto file = tree.extract("bzn/a.bzn")) {
        file.key() = "bzn/A.BZN";
        tree.insert(std::move(file));
    }
    return tree;
}

/// Each operation fails, or is the last one, with hard links and without.
TEST(LooseFileSorter, LosesNothingWhateverFailsOrEnds) {
    using Fault = FaultyFileSystem::Fault;
    const std::map<std::string, std::string> targets = {
        {"A.BZN", "bzn/A.BZN"},
        {"b.bzn", "bzn/b.bzn"},
        {"c.bzn", "bzn/c.bzn"},
        {"phas.odf", "odf/ships/phas.odf"},
        {"PHAS.bmp", "bitmaps/AdmiralsLog/ShipImages/PHAS.bmp"},
        {"x_pulse.odf", "odf/weapons/pulse/x_pulse.odf"},
    };
    const auto bytesAt = [](const Tree& tree, const std::string& path) {
        const auto found = tree.find(path);
        return found == tree.end() ? "(none)" : found->second;
    };
    const auto disk = MakeFileSystem();
    const Tree before = Respelled(kBefore);
    for (const bool hardLinks : {true, false})
        for (const Fault fault : {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndTempWhole,
                                  Fault::EndSwapped, Fault::EndAfter})
            for (std::size_t number = 1;; number += QUILLBAY_SWEEP_STRIDE) {
                SCOPED_TRACE(testing::Message() << hardLinks << int(fault) << " at " << number);
                const Mod mod(kBefore);
                FaultyFileSystem files(*disk);
                if (!hardLinks) files.ForbidHardLinks();
                const auto loose = ListLooseFiles(files, mod.Path());
                files.Arm(number, fault);
                const auto result = Mod::Sort(files, loose, TypeChecks().set());
                const Tree state = Respelled(mod.State());
                for (const auto& [name, target] : targets) {
                    const auto bytes = before.at(name);
                    const bool stays = state.contains(name);
                    const auto there = bytesAt(state, target);
                    if (stays) EXPECT_EQ(state.at(name), bytes);
                    if (fault == Fault::Fail) {
                        EXPECT_EQ(there, stays ? bytesAt(before, target) : bytes) << name;
                        EXPECT_EQ(std::ranges::count(result.notMoved, name), stays) << name;
                    } else if (!stays || there != bytesAt(before, target)) {
                        EXPECT_EQ(there, bytes) << name;
                    }
                }
                if (fault == Fault::Fail) EXPECT_EQ(result.moved + result.notMoved.size(), 7U);
                if (files.Trace().size() < number) break;
                mod.Sort(*disk);
                EXPECT_EQ(Respelled(mod.State()), kAfter);
            }
}

} // namespace
} // namespace quillbay
