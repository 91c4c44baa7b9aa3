#include "odf/OdfCheckRun.h"

#include "odf/RaceList.h"
#include "platform/FileSystemWrapper.h"
#include "platform/PathText.h"
#include "support/DiskTest.h"

#include <algorithm>

namespace quillbay {
namespace {

using Texts = std::vector<std::string>;

/// Lists everything by name, forwards or backwards.
class TurningFileSystem : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;
    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        auto entries = Base().List(folder, detail);
        if (entries) std::ranges::sort(*entries, {}, &DirEntry::name);
        if (entries && backwards) std::ranges::reverse(*entries);
        return entries;
    }
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        return isFull ? std::make_error_code(std::errc::no_space_on_device) : Base().WriteFile(file, bytes);
    }

    bool backwards = false;
    bool isFull = false;
};

class OdfCheckRunTest : public test::DiskTest {
protected:
    void Put(std::string_view name, std::string_view bytes) const { test::PutFile(Join(odf_, name), bytes); }

    const std::string odf_ = temp_ / "odf";
};

TEST_F(OdfCheckRunTest, MeetsEachFileOnceHoweverTheListingMoves) {
    for (const char* folder : {"other", "commands", "special_weapons", "ships", "stations", "weapons",
                               R"(weapons\phasers)", R"(weapons\photons)", R"(weapons\pulse)"})
        Put(Join(folder, "b.odf"), "x");
    for (const char* bad :
         {R"(ships\a.odf)", R"(ships\c.ODF)", R"(ships\d.odf)", R"(ships\note.txt)", "a.odf"})
        Put(bad, "x\r\"");
    const OdfCheckOptions options{OdfCheckSet().set()};
    // Of any six files that follow each other every choice is checked again.
    for (unsigned round = 0; round < 64; ++round) {
        SCOPED_TRACE(round);
        TurningFileSystem files(*disk_);
        OdfCheckRun run(files, odf_);
        Texts met;
        for (auto step = run.Next(options); step != OdfCheckRun::Step::End; step = run.Next(options)) {
            EXPECT_LE(run.ShownFiles(), run.TotalFiles());
            files.backwards = !files.backwards; // as a file that is rewritten may change its place
            if ((round >> met.size() % 6) % 2 == 1) {
                run.CheckAgain();
                ASSERT_EQ(run.Next(options), step);
            }
            met.push_back(run.Error() ? run.Error()->path.substr(odf_.size()) : "good");
            if (run.Error()) run.SkipFile();
        }
        std::ranges::sort(met);
        Texts expected(kOdfFolders.size(), "good");
        expected.insert(expected.begin(), {R"(\ships\a.odf)", R"(\ships\c.ODF)", R"(\ships\d.odf)"});
        EXPECT_EQ(met, expected);
        EXPECT_EQ(run.TotalFiles(), 13U);
    }
}

TEST_F(OdfCheckRunTest, NamesWhatItCouldNotRewriteUntilItCan) {
    Put(R"(ships\a.odf)", "// unused\r\nx");
    TurningFileSystem files(*disk_);
    files.isFull = true;
    OdfCheckRun run(files, odf_);
    EXPECT_EQ(run.Next({{}, true}), OdfCheckRun::Step::FileDone);
    EXPECT_EQ(run.PassedOver(), Texts{odf_ + R"(\ships\a.odf)"});
    files.isFull = false;
    run.CheckAgain();
    EXPECT_EQ(run.Next({{}, true}), OdfCheckRun::Step::FileDone);
    EXPECT_TRUE(run.PassedOver().empty());
    EXPECT_EQ(run.Rewritten(), 1U);
}

TEST_F(OdfCheckRunTest, RaceListAndItsProbe) {
    EXPECT_EQ(BuildRaceList(*disk_, odf_), Texts{""});
    EXPECT_FALSE(ProbeRaceFiles(*disk_, odf_));
    Put(R"(other\a.odf)", "name = \"Old\"\rname = \"\xC4rger\"\r\nName = \"no\"\r\n name = \"no\"");
    Put("a.odf", "name = \"outside\"");
    const auto expect = [&](const std::string& bytes, const Texts& races, bool probe) {
        Put(R"(other\races.odf)", bytes);
        EXPECT_EQ(BuildRaceList(*disk_, odf_), races) << bytes;
        EXPECT_EQ(ProbeRaceFiles(*disk_, odf_), probe) << bytes;
    };
    expect("race = \"A.odf\"\rrace = \"none.odf\"\rrace\r", {"", "\u00C4rger", ""}, false);
    expect("RACE \"a.odf\"\rrace2\rRace1 = \"a.odf\"", {"", "\u00C4rger", "\u00C4rger"}, true);
    for (const std::string bad : {"", R"(..\a.odf)", "../a.odf", "..", ".", R"(x\..\a.odf)", "c:a.odf"})
        expect("race \"" + bad + "\"", {"", ""}, false);
}

} // namespace
} // namespace quillbay
