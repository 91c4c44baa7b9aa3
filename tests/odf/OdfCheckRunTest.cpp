#include "odf/OdfCheckRun.h"

#include "common/PathText.h"
#include "odf/RaceList.h"
#include "platform/FileSystemWrapper.h"
#include "support/DiskTest.h"

#include <algorithm>
#include <map>
#include <random>
#include <regex>

namespace quillbay {
namespace {

using Texts = std::vector<std::string>;
const OdfCheckOptions kAllChecks{OdfCheckSet{}.set()};

Texts Split(const std::string& text, const std::string& at) {
    const std::regex separator(at);
    return {std::sregex_token_iterator(text.begin(), text.end(), separator, -1), {}};
}

std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](int c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The checks once more, slowly and in other words, for ASCII.
struct SlowChecker {
    Texts paths;

    bool Exists(const std::string& name) const {
        return std::ranges::any_of(paths,
                                   [&](const std::string& p) { return Lower(p).ends_with(Lower(name)); });
    }
    /// The number of the failed check, or -1.
    int Check(const std::string& whole) const {
        const std::string line = whole.substr(0, whole.find("//"));
        std::smatch m;
        const auto is = [&](const std::string& form, auto... anyCase) {
            return std::regex_match(line, m, std::regex(form, (std::regex::ECMAScript | ... | anyCase)));
        };
        constexpr auto anyCase = std::regex::icase;
        const std::string unwritten = R"_(tooltip =(.?|.(""|"writeme"|"write me")) *)_";
        if (std::regex_match(whole, std::regex("//.*| *"))) return -1;
        if (std::ranges::count(line, '"') % 2 == 1) return 0;
        if (is(R"_(#include "(.*).)_") && !Exists(m[1])) return 1;
        if (is(R"_(race = "(.*?)".*)_") && m[1] != "" && m[1] != "Terran") return 2;
        if (is(R"_(weapon0?0?[1-9][^"]*"(.*?)".*)_", anyCase) && !Exists(m[1].str() + ".odf")) return 3;
        if (is(unwritten, anyCase)) return 4;
        if (is("builditem.*? = (.*?)( = .*)?", anyCase)) {
            const std::string value = std::regex_replace(m[1].str(), std::regex(R"_((\.odf"|.)?$)_"), "",
                                                         std::regex_constants::format_first_only);
            if (!Exists((value + ".odf").substr(1))) return 5;
        }
        return is("verbose" + unwritten, anyCase) ? 6 : -1;
    }
};

/// Lists the file that was written last behind all others, or before them.
class MovingFileSystem : public FileSystemWrapper {
public:
    MovingFileSystem(FileSystem& base, bool toFront) : FileSystemWrapper(base), toFront_(toFront) {}
    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        auto entries = Base().List(folder, detail);
        const auto key = [&](const DirEntry& e) {
            return std::pair((e.name == written_) != toFront_, e.name);
        };
        if (entries) std::ranges::sort(*entries, {}, key);
        return entries;
    }
    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        if (isFull) return std::make_error_code(std::errc::no_space_on_device);
        written_ = LastComponent(file);
        return Base().WriteFile(file, bytes);
    }

    bool isFull = false;

private:
    bool toFront_;
    std::string written_;
};

class OdfCheckRunTest : public test::DiskTest {
protected:
    std::string Pick(const std::string& from) {
        const Texts pieces = Split(from, ";");
        return pieces[random_() % pieces.size()];
    }
    std::string RandomLine() {
        std::string line =
            Pick("race = ;Race = ;weapon1 = ;Weapon;weaponHardpoints1 = ;tooltip = ;tooltip;  ;x;"
                 "builditem;BuildItem2 = ;verboseTooltip = ;#include ;//");
        for (auto more = 1 + random_() % 3; more > 0; --more)
            line +=
                Pick(R"("";";"scout";"SCOUT.odf";"ship.odf";"Terran";"terran";"WriteMe";"write me";//; ; = ;)"
                     R"("none";12;.odf";0)");
        return line;
    }
    /// Fills the folders at random: the lines of each ODF file, by path.
    std::map<std::string, Texts> PutRandomFiles() {
        std::map<std::string, Texts> lines{
            {odf_ + R"(\other\races.odf)", {"Race1 = \"t.odf\"", "race2"}},
            {odf_ + R"(\other\t.odf)", {"name = \"Old\"", "name = \"Terran\""}}};
        for (const std::string_view folder : kOdfFolders) {
            for (auto files = random_() % 6; files > 0; --files) {
                const std::string name = Pick("scout.odf;battleship.ODF;a.odf;b.Odf;none.odf.odf;c.txt");
                Texts text(random_() % 4);
                std::ranges::generate(text, [&] { return RandomLine(); });
                lines[Join(Join(odf_, folder), name)] = text;
            }
        }
        for (const auto& [path, text] : lines) {
            std::string bytes;
            for (const std::string& line : text)
                bytes += line + Pick("\r;\r\n");
            test::PutFile(path, bytes);
        }
        std::erase_if(lines, [](const auto& file) { return file.first.ends_with("txt"); });
        return lines;
    }

    const std::string odf_ = temp_ / "odf";
    std::mt19937 random_{20'260'107};
};

TEST_F(OdfCheckRunTest, FindsWhatASlowCheckerFindsAndNeverLosesItsPlace) {
    for (int round = 0; round < 30; ++round) {
        Ignore(disk_->RemoveTree(odf_));
        SlowChecker slow;
        const auto lines = PutRandomFiles();
        for (const auto& file : lines)
            slow.paths.push_back(file.first);
        std::map<std::string, std::pair<std::size_t, int>> expected, found;
        for (const auto& [path, text] : lines)
            for (std::size_t at = text.size(); at-- > 0;)
                if (const int failed = slow.Check(text[at]); failed >= 0) expected[path] = {at, failed};

        MovingFileSystem files(*disk_, round % 2 == 0);
        OdfCheckRun run(files, odf_);
        std::size_t steps = 0;
        for (auto step = run.Next(kAllChecks); step != OdfCheckRun::Step::End; step = run.Next(kAllChecks)) {
            ++steps;
            EXPECT_LE(run.ShownFiles(), run.TotalFiles());
            if (random_() % 2 == 0) {
                if (run.Error()) Ignore(files.WriteFile(run.Error()->path, run.Error()->bytes));
                run.CheckAgain();
                ASSERT_EQ(run.Next(kAllChecks), step);
            }
            if (step != OdfCheckRun::Step::Error) continue;
            const OdfError& error = *run.Error();
            found[error.path] = {error.line, static_cast<int>(error.check - kOdfChecks.data())};
            EXPECT_FALSE(files.WriteFile(error.path, error.bytes));
            run.SkipFile();
        }
        EXPECT_EQ(found, expected);
        EXPECT_EQ(steps, slow.paths.size()) << "every file once";

        const OdfIndex index(ListOdfFolders(*disk_, odf_));
        for (const std::string& name :
             Split(R"(;t.odf;SHIP.odf;ships\scout.odf;f\ships\scout.odf;a.odf;odf)", ";"))
            EXPECT_EQ(index.OdfExists(name), slow.Exists(name)) << name;
    }
}

TEST_F(OdfCheckRunTest, NamesWhatItCouldNotRewriteUntilItCan) {
    test::PutFile(odf_ + R"(\ships\a.odf)", "// unused\r\nx");
    MovingFileSystem files(*disk_, false);
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
    test::PutFile(odf_ + R"(\other\a.odf)", "name = \"\xC4rger\"\r\nName = \"no\"\r\n name = \"no\"");
    test::PutFile(odf_ + R"(\a.odf)", "name = \"outside\"");
    const auto expect = [&](std::string_view bytes, const Texts& races, bool probe) {
        test::PutFile(odf_ + R"(\other\races.odf)", bytes);
        EXPECT_EQ(BuildRaceList(*disk_, odf_), races) << bytes;
        EXPECT_EQ(ProbeRaceFiles(*disk_, odf_), probe) << bytes;
    };
    expect("race = \"A.odf\"\rrace = \"none.odf\"\rrace\r", {"", "\u00C4rger", ""}, false);
    expect("RACE \"a.odf\"\rrace \"a.odf\"", {"", "\u00C4rger", "\u00C4rger"}, true);
    for (const std::string& bad : Split(R"(;..\a.odf;../a.odf;..;.;x\..\a.odf;c:a.odf)", ";"))
        expect("race \"" + bad + "\"", {"", ""}, false);
}

} // namespace
} // namespace quillbay
