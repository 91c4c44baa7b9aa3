#include "odf/OdfCheckRun.h"

#include "common/PathText.h"
#include "odf/RaceList.h"
#include "platform/FileSystemWrapper.h"
#include "support/DiskTest.h"

#include <algorithm>
#include <map>
#include <random>

namespace quillbay {
namespace {

using Texts = std::vector<std::string>;
const OdfCheckOptions kAllChecks{OdfCheckSet{}.set()};

Texts Split(const std::string& text, const std::string& at) {
    Texts pieces{""};
    for (std::size_t i = 0; i < text.size();) {
        const bool isEnd = text.compare(i, at.size(), at) == 0;
        if (isEnd) pieces.emplace_back();
        if (!isEnd) pieces.back() += text[i];
        i += isEnd ? at.size() : 1;
    }
    return pieces;
}

std::string Lower(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

/// The checks once more, slowly and in other words, for ASCII.
struct SlowChecker {
    Texts paths, races;

    bool Exists(const std::string& name) const {
        return std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
            return path.size() >= name.size() && Lower(path.substr(path.size() - name.size())) == Lower(name);
        });
    }
    static bool IsUnwritten(std::string line, std::size_t from) {
        while (line.back() == ' ')
            line.pop_back();
        const std::string value = line.size() > from ? Lower(line.substr(from)) : "";
        return value.empty() || value == "\"\"" || value == "\"writeme\"" || value == "\"write me\"";
    }
    /// The number of the failed check, or -1.
    int Check(const std::string& whole) const {
        if (whole.rfind("//", 0) == 0 || whole.find_first_not_of(' ') == std::string::npos) return -1;
        const std::string line = Split(whole, "//")[0];
        const Texts quoted = Split(line, "\""), assigned = Split(line, " = ");
        const auto starts = [&](const std::string& start) { return line.substr(0, start.size()) == start; };
        const auto startsLowered = [&](const std::string& start) { return Lower(line).find(start) == 0; };
        if (quoted.size() % 2 == 0) return 0;
        if (starts("#include \"") && !Exists(line.substr(10, line.size() - 11))) return 1;
        if (starts("race = \"") && std::count(races.begin(), races.end(), quoted[1]) == 0) return 2;
        if (startsLowered("weapon") && quoted.size() > 1 &&
            std::atoi(("0" + assigned[0].substr(6, 3)).c_str()) != 0 && !Exists(quoted[1] + ".odf"))
            return 3;
        if (startsLowered("tooltip =") && IsUnwritten(line, 10)) return 4;
        if (startsLowered("builditem") && assigned.size() > 1) {
            std::string value = assigned[1];
            if (value.size() < 5 || value.substr(value.size() - 5) != ".odf\"")
                value = value.substr(0, value.empty() ? 0 : value.size() - 1) + ".odf\"";
            if (!Exists(value.substr(1, value.size() - 2))) return 5;
        }
        return startsLowered("verbosetooltip =") && IsUnwritten(line, 17) ? 6 : -1;
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
        written_ = LastComponent(file);
        return Base().WriteFile(file, bytes);
    }

private:
    bool toFront_;
    std::string written_;
};

class OdfCheckRunTest : public test::DiskTest {
protected:
    std::string Pick(const std::string& from) {
        const Texts pieces = Split(from, "|");
        return pieces[random_() % pieces.size()];
    }
    std::string RandomLine() {
        std::string line =
            Pick("race = |Race = |weapon1 = |Weapon|weaponHardpoints1 = |tooltip = |tooltip|builditem|"
                 "  |BuildItem2 = |verboseTooltip = |#include |//|x");
        for (auto more = 1 + random_() % 3; more > 0; --more)
            line += Pick(
                R"("|""|"scout"|"SCOUT.odf"|"ship.odf"|"Terran"|"terran"|"WriteMe"|"write me"|"none"|//| | = |12)"
                R"(|.odf"|0|)");
        return line;
    }
    /// Fills the folders at random: the lines of each ODF file, by path.
    std::map<std::string, Texts> PutRandomFiles() {
        std::map<std::string, Texts> lines{
            {odf_ + R"(\other\races.odf)", {"Race1 = \"t.odf\"", "race2 \"none.odf\""}},
            {odf_ + R"(\other\t.odf)", {"name = \"Old\"", "name = \"Terran\""}}};
        for (const std::string_view folder : kOdfFolders)
            for (auto files = random_() % 6; files > 0; --files) {
                Texts& text = lines[Join(Join(odf_, folder),
                                         Pick("scout.odf|battleship.ODF|a.odf|b.Odf|none.odf.odf|c.txt"))];
                text.clear();
                for (auto more = random_() % 4; more > 0; --more)
                    text.push_back(RandomLine());
            }
        for (const auto& [path, text] : lines) {
            std::string bytes;
            for (const std::string& line : text)
                bytes += line + Pick("\r|\r\n");
            test::PutFile(path, bytes);
        }
        std::erase_if(lines, [](const auto& file) { return file.first.ends_with("txt"); });
        return lines;
    }

    const std::string odf_ = temp_ / "odf";
    std::mt19937 random_{20'260'107};
};

TEST_F(OdfCheckRunTest, FindsWhatASlowCheckerFinds) {
    for (int round = 0; round < 40; ++round) {
        Ignore(disk_->RemoveTree(odf_));
        SlowChecker slow{{}, {"", "Terran"}};
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
        for (auto step = run.Next(kAllChecks); step != OdfCheckRun::Step::End;
             step = run.Next(kAllChecks), ++steps) {
            EXPECT_LE(run.ShownFiles(), run.TotalFiles());
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
             Split(R"(|t.odf|SHIP.odf|ships\scout.odf|f\ships\scout.odf|a.odf|odf)", "|"))
            EXPECT_EQ(index.OdfExists(name), slow.Exists(name)) << name;
    }
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
    for (const std::string& bad : Split(R"(..\a.odf|../a.odf|..|.||x\..\a.odf|c:a.odf)", "|"))
        expect("race \"" + bad + "\"", {"", ""}, false);
}

TEST_F(OdfCheckRunTest, GoesOnAtItsFileAfterErrorsAndPauses) {
    using enum OdfCheckRun::Step;
    for (const std::string& path : Split(R"(ships\a|ships\b|ships\c|Weapons\PULSE\d)", "|"))
        test::PutFile(odf_ + '\\' + path + ".odf", path.back() == 'b' ? "\"" : "x");
    MovingFileSystem files(*disk_, false);
    OdfCheckRun run(files, odf_);
    EXPECT_EQ(run.Next(kAllChecks), FileDone);
    EXPECT_EQ(run.Next(kAllChecks), Error);
    EXPECT_FALSE(files.WriteFile(run.Error()->path, "x"));
    run.CheckAgain();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(run.ShownFiles(), i == 2 ? 1U : 0U) << "never below nothing";
        EXPECT_EQ(run.Next(kAllChecks), FileDone);
    }
    run.CheckAgain(); // a pause behind the last file of all
    EXPECT_EQ(run.Next(kAllChecks), FileDone);
    EXPECT_EQ(run.Next(kAllChecks), End);
    ASSERT_FALSE(disk_->RemoveTree(odf_));
    run.CheckAgain();
    EXPECT_EQ(run.Next(kAllChecks), End);
    EXPECT_EQ(run.ShownFiles(), 0U);
}

} // namespace
} // namespace quillbay
