#include "library/ModIntake.h"

#include "library/ModExchange.h"
#include "platform/PathText.h"
#include "platform/archive/Crc32.h"
#include "support/ArchiveMaker.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <clocale>

// Archives and folders on their way into the library.
namespace quillbay::test {
namespace {

using enum IntakeProblem;
using Reason = LeftOutReason;

/// A library, and beside it a place for archives and folders that shall get into it.
class ModIntakeTest : public DiskTest {
protected:
    struct Taken {
        IntakeFailure failure;
        std::vector<LeftOut> leftOut;
        std::vector<PlacedMod> placed;
        bool isSorted = true;
    };

    ModIntakeTest() { PutFolder(temp_ / "mods"); }

    /// Takes in a path below the place for them; a mod that is there already is replaced where it may be.
    Taken Take(
        FileSystem& files, const std::string& name, const IntakeLimits& limits = {},
        const IntakeProgress& progress = [](auto, auto) { return true; });
    Taken Take(const std::string& name) { return Take(*disk_, name); }
    /// The same of an archive of these bytes.
    Taken TakeBytes(const std::string& name, std::string_view bytes) {
        PutFile(outside_ / name, bytes);
        return Take(name);
    }
    std::string Mods() const { return temp_ / "mods"; }
    /// The files of the library, sorted: "X/odf/a=bytes Y/b=bytes". Behind a "!" stands what should not be:
    /// what lies beside the library, and what the program works on.
    std::string Files() const;

    const TempFolder outside_;
};

ModIntakeTest::Taken ModIntakeTest::Take(FileSystem& files, const std::string& name,
                                         const IntakeLimits& limits, const IntakeProgress& progress) {
    ModIntake intake(files, OpenArchive, Mods(), temp_ / "game");
    Taken taken;
    taken.failure = intake.Unpack(outside_ / name, limits, progress);
    const ModLayout& layout = intake.Layout();
    taken.leftOut = layout.leftOut;
    for (std::size_t i = 0; i < layout.mods.size() && !taken.failure; ++i) {
        taken.isSorted = layout.mods[i].isSorted;
        const std::string& mod = layout.mods[i].name;
        const ModPlace place = intake.FindPlace(mod);
        if (place == ModPlace::Free || place == ModPlace::Replaceable)
            taken.placed.push_back(intake.Place(i, mod, place == ModPlace::Replaceable));
    }
    return taken;
}

std::string ModIntakeTest::Files() const {
    std::string files;
    for (const auto& text : temp_.Entries()) {
        const bool isFile = !text.ends_with('/') && text.find("->") == std::string::npos;
        if (!isFile && text.ends_with('/') && ('/' + text).find("/~") == std::string::npos) continue;
        files += files.empty() ? "" : " ";
        files += isFile && text.starts_with("mods/") ? text.substr(5) : "!" + text;
    }
    return files;
}

/// With `to`, of the same length, in the place of every `from`.
std::string Patched(std::string bytes, std::string_view from, std::string_view to) {
    for (auto at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + to.size()))
        bytes.replace(at, from.size(), to);
    return bytes;
}

/// A zip whose names are marked as UTF-8, or are not.
std::string Marked(std::string zip, bool isMarked) {
    for (const auto& [record, flags] : {std::pair{"PK\x03\x04", 6U}, {"PK\x01\x02", 8U}})
        for (auto at = zip.find(record); at != std::string::npos; at = zip.find(record, at + 1))
            zip[at + flags + 1] = isMarked ? '\x08' : '\0';
    return zip;
}

/// A zip of one entry, called `old` there, with a second name as programs add it for other systems.
std::string Renamed(std::string zip, std::string_view old, std::string_view name) {
    Crc32 sum;
    sum.Add(old);
    std::string record = "up" + std::string{char(5 + name.size()), '\0', '\x01'};
    for (unsigned shift = 0; shift < 32; shift += 8)
        record += static_cast<char>(sum.Value() >> shift & 0xFF);
    record += name;
    const auto end = zip.rfind("PK\x05\x06");
    for (const auto at : {zip.rfind("PK\x01\x02") + 30, end + 12}) // lengths of the records, of the list
        zip[at] = static_cast<char>(zip[at] + static_cast<char>(record.size()));
    return zip.insert(end, record);
}

TEST_F(ModIntakeTest, AModBeginsWhereTheGamesFoldersBegin) {
    struct Case {
        const char* archive;
        const char* contents;
        const char* expected; ///< files below `mods`
        std::vector<LeftOut> leftOut;
        bool isSorted = true;
    };
    const Case cases[] = {
        {"MyMod_v1.2.zip", "odf/ships/a=1 x.txt=2", "MyMod/odf/ships/a=1 MyMod/x.txt=2", {}},
        {"z.zip", "Cool/SOD/a=1 Cool/odd/b=2", "Cool/SOD/a=1 Cool/odd/b=2", {}},
        {"z.zip", "pack/mods/X/Textures/Rgb/a=1", "X/Textures/Rgb/a=1", {}},
        {"z.zip", "Mods/odf/a=1", "z/odf/a=1", {}},
        {"z.zip", "w/X/modinfo.TXT=1 w/X/some/b=2", "X/modinfo.TXT=1 X/some/b=2", {}},
        {"z.zip", "X/addon/Y/odf/a=1", "X/addon/Y/odf/a=1", {}},
        {"z.zip", "misc/X/odf/a=1", "z/misc/X/odf/a=1", {}},
        // Papers.
        {"z.zip",
         "laws.txt=1 ReadMe1.txt=2 modpic.BMP=3 w/notes=4 w/shots/1=5 w/X/odf/a=6 w/X/in.txt=7 w/none/",
         "X/Docs/laws.txt=1 X/Docs/notes=4 X/Docs/shots/1=5 X/ReadMe1.txt=2 X/in.txt=7 X/modpic.BMP=3 "
         "X/odf/a=6",
         {}},
        {"z.zip",
         "a.b.txt=1 readme=2 w/README=3 w/X/readme=4 w/X/docs/A.b.TXT=5 w/X/odf/b=6",
         "X/docs/A.b.TXT=5 X/docs/README=3 X/docs/a.b (2).txt=1 X/docs/readme (2)=2 X/odf/b=6 X/readme=4",
         {}},
        {"z.zip", "a=1 X/Docs=2 X/odf/b=3", "X/Docs (2)/a=1 X/Docs=2 X/odf/b=3", {}},
        // Several mods, and several depths.
        {"z.zip",
         "w/A/odf/a=1 w/B/sod/b=2 w/readme=3 w/C/deep/odf/c=4",
         "A/odf/a=1 B/sod/b=2",
         {{"w\\readme", Reason::BesideSeveralMods}, {"w\\C", Reason::BesideSeveralMods}}},
        {"z.zip",
         "A/odf/a=1 A/extra/odf/b=2 other/deep/sod/c=3",
         "A/Docs/other/deep/sod/c=3 A/extra/odf/b=2 A/odf/a=1",
         {}},
        {"z.zip", "A/odf/a=1 B/odf/ B/none/", "A/odf/a=1", {}},
        // Nothing that tells.
        {"z.zip", "a.odf=1 b/c.wav=2", "z/a.odf=1 z/b/c.wav=2", {}, false},
        {"z.zip", "w/in/x.odf=1 w/readme=2", "in/readme=2 in/x.odf=1", {}, false},
        // What no mod may hold.
        {"z.zip",
         "X/odf/a=1 X/BACKUP/odf/a=2 X/BACKUP/b=2 X/Addon/Y/backup=3 __macosx/X/._a=4 X/odf/Thumbs.db=5 "
         "X/.DS_Store=6 X/~Quillbay.new=7 X/Changed/f=8 X/Addon/Y/changed/g=9",
         "X/Addon/Y/Docs/changed/g=9 X/Docs/Changed/f=8 X/odf/a=1",
         {{"X\\BACKUP", Reason::Backup},
          {"X\\Addon\\Y\\backup", Reason::Backup},
          {"__macosx", Reason::Clutter},
          {"X\\odf\\Thumbs.db", Reason::Clutter},
          {"X\\.DS_Store", Reason::Clutter},
          {"X\\~Quillbay.new", Reason::Clutter}}},
        {"z.zip",
         "X/odf/a=1 X/ODF/A=2 X/odf/nul.txt=3 X/odf/dot./x=4 X/odf/b:c=5 X/sod/b=6 X/sod/b/c=7 X/sod=8",
         "X/odf/A=2 X/sod/b=6",
         {{"X\\odf\\a", Reason::Superseded},
          {"X\\odf\\nul.txt", Reason::Name},
          {"X\\odf\\dot.", Reason::Name},
          {"X\\odf\\b:c", Reason::Name},
          {"X\\sod\\b", Reason::FileAndFolder},
          {"X\\sod", Reason::FileAndFolder}}},
        {"z.tar",
         "X/odf/a=1 X/odf/l->a X/odf/h=>X/odf/a X/odf/p| ./X//odf/./b=2",
         "X/odf/a=1 X/odf/b=2",
         {{"X\\odf\\l", Reason::Link}, {"X\\odf\\h", Reason::Link}, {"X\\odf\\p", Reason::Link}}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.contents);
        const auto packing = std::string_view(each.archive).ends_with(".tar") ? Packing::Tar : Packing::Zip;
        const Taken taken = TakeBytes(each.archive, Pack(packing, each.contents));
        EXPECT_EQ(taken.failure.problem, None) << taken.failure.error.message();
        EXPECT_EQ(Files(), each.expected);
        EXPECT_EQ(taken.leftOut, each.leftOut);
        EXPECT_EQ(taken.isSorted, each.isSorted);
        ASSERT_FALSE(disk_->RemoveTree(Mods()));
        PutFolder(Mods());
    }
}

TEST_F(ModIntakeTest, EveryFormatGivesTheSameFiles) {
    const std::string big(700'000, 'x');
    const std::string contents = "X/odf/big=" + big + " X/empty= X/run.sh=#!";
    std::vector<std::pair<std::string, std::string>> archives = {{"a.rar", PackRar4(contents)},
                                                                 {"b.rar", PackRar5(contents)}};
    for (const auto packing :
         {Packing::Zip, Packing::SevenZip, Packing::Tar, Packing::TarGz, Packing::TarBz2, Packing::TarXz})
        archives.emplace_back("p" + std::to_string(static_cast<int>(packing)), Pack(packing, contents));
    for (const auto& [name, bytes] : archives) {
        SCOPED_TRACE(name);
        std::uint64_t last = 0;
        PutFile(outside_ / name, bytes);
        const Taken taken = Take(*disk_, name, {}, [&](std::uint64_t done, std::uint64_t total) {
            EXPECT_EQ(total, bytes.size());
            EXPECT_LE(done, total);
            last = done;
            return true;
        });
        EXPECT_EQ(taken.failure.problem, None) << taken.failure.error.message();
        EXPECT_GT(last, bytes.size() / 3);
        EXPECT_EQ(Files(), "X/empty= X/odf/big=" + big + " X/run.sh=#!");
        const bool isRar = name.ends_with(".rar");
        EXPECT_EQ(InfoOf("mods/X/odf/big").modified.time_since_epoch().count() == kPackedTime, !isRar);
#ifndef _WIN32
        EXPECT_EQ(InfoOf("mods/X/run.sh").executable, !isRar);
        EXPECT_FALSE(InfoOf("mods/X/empty").executable);
#endif
        ASSERT_FALSE(disk_->RemoveTree(temp_ / "mods/X"));
    }
}

TEST_F(ModIntakeTest, NamesKeepTheirLetters) {
    // The library behind the reader gives no name at all for what the locale cannot express.
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
    const std::string contents = "Größe/odf/ж=1";
    const std::string plain = "Gr12e/odf/a=1";
    const std::string ascii = Pack(Packing::Zip, plain);
    std::vector<std::pair<std::string, std::string>> archives = {
        {Marked(Pack(Packing::Zip, contents), true), contents},
        {Marked(Pack(Packing::Zip, contents), false), contents},
        {PackRar5(contents), contents},
        {Patched(ascii, "Gr12e",
                 "Gr\x94\xE1"
                 "e"),
         "Größe/odf/a=1"},
        {Renamed(ascii, plain.substr(0, plain.find('=')), "€/odf/a"), "€/odf/a=1"},
        {Renamed(ascii, "Gr12e", "€/odf/a"), plain},
        {Patched(ascii, "/", "\\"), plain}};
#ifndef _WIN32 // where only the locale's letters can be written
    archives.emplace_back(Pack(Packing::SevenZip, contents), contents);
    archives.emplace_back(Pack(Packing::TarGz, contents), contents);
#endif
    for (const auto& [bytes, expected] : archives) {
        EXPECT_EQ(TakeBytes("x", bytes).failure.problem, None);
        EXPECT_EQ(Files(), expected);
        ASSERT_FALSE(disk_->RemoveTree(Mods()));
        PutFolder(Mods());
    }
    for (const auto& [archive, mod] : {std::pair{"Cool Mod_v1.2.zip", "Cool Mod"},
                                       {"Cool-1.0.3b.tar.GZ", "Cool"},
                                       {"Cool (1).7z", "Cool"},
                                       {"Cool_v2 (12).rar", "Cool"},
                                       {"Tempest 2.zip", "Tempest 2"},
                                       {"Mod 1.2_beta.zip", "Mod 1.2_beta"},
                                       {"v1.2.zip", "v1.2"},
                                       {"(1).zip", "(1)"},
                                       {"A.B.zip", "A.B"},
                                       {".zip", ".zip"}})
        EXPECT_EQ(ModNameFromArchive(archive), mod);
}

TEST_F(ModIntakeTest, RefusesWithAReasonAndLeavesNothingBehind) {
    struct Case {
        const char* name;
        std::string bytes;
        IntakeProblem problem;
        std::error_code error{};
        IntakeLimits limits{};
    };
    const std::string contents = "X/odf/a=" + std::string(5000, 'a') + "b X/odf/b=22222";
    const std::string zip = Pack(Packing::Zip, contents);
    const std::string rar5 = PackRar5(contents);
    const auto half = [](const std::string& bytes) { return bytes.substr(0, bytes.size() / 2); };
    const std::error_code broken = ArchiveError::Broken, part = ArchiveError::PartOfSet,
                          encrypted = ArchiveError::Encrypted, unknown = ArchiveError::Unknown;
    const Case cases[] = {
        {"a.zip", Pack(Packing::EncryptedZip, contents), Unreadable, encrypted},
        {"a.rar", PackRar4(contents, {.isEncrypted = true}), Unreadable, encrypted},
        {"b.rar", PackRar5(contents, {.isEncrypted = true}), Unreadable, encrypted},
        {"c.rar", PackRar5(contents, {.hasHiddenNames = true}), Unreadable, encrypted},
        {"d.rar", PackRar4(contents, {.isVolume = true}), Unreadable, part},
        {"e.rar", PackRar5(contents, {.isVolume = true}), Unreadable, part},
        {"f.part2.rar", "noise", Unreadable, part},
        {"f.R00", "noise", Unreadable, part},
        {"f.z01", half(zip), Unreadable, part},
        {"f.7z.001", half(Pack(Packing::SevenZip, contents)), Unreadable, part},
        {"f.zip",
         "noise" + Patched(zip.substr(zip.rfind("PK\x05\x06")), std::string("\x06\0", 2), "\x06\x02"),
         Unreadable, part},
        {"f.zip", std::string(zip).replace(zip.rfind("PK\x05\x06") + 4, 1, "\x01"), Unreadable, part},
        {"g.zip", half(zip), Unreadable, broken},
        {"g.zip", zip.substr(0, zip.rfind("PK\x05\x06")), Unreadable, broken},
        {"g.zip", std::string(zip).replace(zip.rfind("PK\x01\x02"), 4, "PK\x01\x03"), Unreadable, broken},
        {"g.7z", half(Pack(Packing::SevenZip, contents)), Unreadable, broken},
        {"g.7z", Pack(Packing::SevenZip, contents).replace(8, 24, 24, '\0'), Unreadable, broken},
        {"g.tgz", half(Pack(Packing::TarGz, contents)), Unreadable, broken},
        {"g.tar", Pack(Packing::Tar, contents).substr(0, 3000), Unreadable, broken},
        {"g.rar", Patched(PackRar4(contents), "22222", "22223"), Unreadable, broken},
        {"h.rar", PackRar5(contents, {.missing = 1}), Unreadable, broken},
        {"i.zip", "", Unreadable, unknown},
        {"i.txt", "Just a text.", Unreadable, unknown},
        {"j.zip", Pack(Packing::Zip, "X/odf/a=1 ../../evil=2"), LeadsOut},
        {"j.zip", Pack(Packing::Zip, "/abs=2"), LeadsOut},
        {"j.zip", Pack(Packing::Zip, "C:\\win=2"), LeadsOut},
        {"j.zip", Pack(Packing::Zip, "\\\\host\\share\\x=2"), LeadsOut},
        {"j.tar", Pack(Packing::Tar, "a/../../b->x"), LeadsOut},
        {"k.zip", Pack(Packing::Zip, "X/odf/ X/Backup/odf/a=1"), Empty},
        {"l.zip", zip, TooLarge, {}, {.bytes = 5005}},
        {"l.zip", zip, TooLarge, {}, {.entries = 1}},
        {"m.zip", zip, NoRoom, {}, {.leastLeft = UINT64_MAX}},
        {"m.zip", zip, NoRoom, {}, {.leastPercentLeft = 200}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        PutFile(outside_ / each.name, each.bytes);
        const Taken taken = Take(*disk_, each.name, each.limits);
        EXPECT_EQ(taken.failure.problem, each.problem);
        EXPECT_EQ(taken.failure.error, each.error) << taken.failure.error.message();
        EXPECT_TRUE(Files().empty());
        EXPECT_FALSE(disk_->Stat(temp_ / kStagingName));
    }
    EXPECT_EQ(Take("none.zip").failure.error, std::errc::no_such_file_or_directory);
    int calls = 0;
    PutFile(outside_ / "n.zip", zip);
    EXPECT_EQ(Take(*disk_, "n.zip", {}, [&](auto, auto) { return ++calls < 3; }).failure.problem, Stopped);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(Files(), "");
}

TEST_F(ModIntakeTest, NoDamagePassesForTheWhole) {
    const std::string first = "first" + std::string(60, '1');
    const std::string contents = "X/odf/a=" + first + " X/odf/b=second";
    for (const auto& bytes :
         {Pack(Packing::Zip, contents), Pack(Packing::SevenZip, contents), Pack(Packing::TarBz2, contents),
          Pack(Packing::TarXz, contents), PackRar4(contents), PackRar5(contents)}) {
        for (std::size_t at = 0; at < bytes.size(); at += SweepStride()) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << at % 8));
            const Taken taken = TakeBytes("x", damaged);
            // A changed name, where the format has no checksum for it, is none of a file's bytes.
            const std::string files = Files();
            for (auto end = files.find('='); end != std::string::npos; end = files.find('=', end + 1)) {
                const auto is = std::string_view(files).substr(end + 1, files.find(' ', end) - end - 1);
                EXPECT_TRUE(is == first || is == "second")
                    << is << " of byte " << at << " in " << bytes.substr(0, 4);
            }
            EXPECT_EQ(files.empty(), bool(taken.failure)) << at;
            ASSERT_FALSE(disk_->RemoveTree(Mods()));
            PutFolder(Mods());
        }
    }
}

TEST_F(ModIntakeTest, OnlyAModsOwnFolderCanBeReplaced) {
    using enum ModPlace;
    temp_.Put("mods/Mod/odf/a=1 mods/file=x mods/Holds/game/Tempest2.exe=x");
    const ModIntake intake(*disk_, OpenArchive, Mods(), Mods() + "\\Holds\\game");
    for (const auto& [name, place] : {std::pair{"New", Free},
                                      {"MOD", Replaceable},
                                      {"file", Taken},
                                      {"Holds", Taken},
                                      {"nul", InvalidName},
                                      {"a:b", InvalidCharacter},
                                      {"~quillbay.add", InvalidName}})
        EXPECT_EQ(intake.FindPlace(name), place) << name;
}

/// What stands in the library before a replacement, what shall stand there afterwards, and the archive.
constexpr const char* kOldMod = "mods/Mod/odf/a=old mods/Mod/odf/gone=old mods/Mod/Backup/odf/a=game "
                                "mods/Mod/Backup/~quillbay.record=record mods/Mod/changed/date/x=game "
                                "mods/Mod/Addon/Both/odf/b=old mods/Mod/Addon/Both/BACKUP/odf/b=game "
                                "mods/Mod/Addon/Kept/odf/c=old mods/Mod/Addon/Kept/Changed/c=game "
                                "mods/Mod/Addon/Gone/odf/d=old mods/Other/odf/e=other";
constexpr const char* kNewMod =
    "mod/odf/a=new mod/odf/b=new mod/ADDON/both/odf/b=new mod/ADDON/Added/odf/f=new";
constexpr const char* kReplaced = "Mod/ADDON/Added/odf/f=new Mod/ADDON/Kept/Changed/c=game "
                                  "Mod/ADDON/Kept/odf/c=old Mod/ADDON/both/BACKUP/odf/b=game "
                                  "Mod/ADDON/both/odf/b=new Mod/Backup/odf/a=game "
                                  "Mod/Backup/~quillbay.record=record Mod/changed/date/x=game "
                                  "Mod/odf/a=new Mod/odf/b=new Other/odf/e=other";

TEST_F(ModIntakeTest, AReplacedModKeepsWhatIsTheGames) {
    temp_.Put(kOldMod);
    const Taken taken = TakeBytes("new.zip", Pack(Packing::Zip, kNewMod));
    ASSERT_EQ(taken.placed.size(), 1U);
    EXPECT_FALSE(taken.placed[0].error);
    EXPECT_EQ(taken.placed[0].name, "Mod");
    EXPECT_TRUE(taken.placed[0].wasInstalled);
    EXPECT_EQ(Files(), kReplaced);
    EXPECT_FALSE(disk_->Stat(temp_ / kStagingName));

    // Not replaced unless asked for.
    ModIntake intake(*disk_, OpenArchive, Mods(), {});
    EXPECT_FALSE(intake.Unpack(outside_ / "new.zip", {}, [](auto, auto) { return true; }));
    EXPECT_EQ(intake.Place(0, "Mod", false).error, std::errc::file_exists);
    EXPECT_FALSE(intake.Place(0, "Third", false).error);
    EXPECT_EQ(BytesOf("mods/Third/odf/b"), "new");
}

using Fault = FaultyFileSystem::Fault;
constexpr auto kFaults = {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndAfter};

TEST_F(ModIntakeTest, EveryFailureAndEveryEndLeavesTheOldOrTheNewWhole) {
    PutFile(outside_ / "new.7z",
            Pack(Packing::SevenZip, std::string(kNewMod) + " licence=paper readme=paper"));
    for (const char* before : {kOldMod, "mods/Other/odf/e=other"}) {
        std::string after;
        const auto run = [&](std::size_t number, Fault fault) {
            EXPECT_FALSE(disk_->RemoveTree(Mods()));
            temp_.Put(before);
            const std::string old = Files();
            FaultyFileSystem faulty(*disk_);
            faulty.Arm(number, fault);
            Take(faulty, "new.7z");
            RecoverMods(*disk_, Mods()); // at the next start
            if (after.empty()) after = Files();
            if (Files() != after) {
                EXPECT_EQ(Files(), old);
            }
            Take("new.7z");
            EXPECT_EQ(Files(), after);
            return faulty.Trace();
        };
        const std::string trace = run(0, Fault::None);
        ASSERT_GT(trace.size(), 45U);
        SweepFaults(trace, kFaults, run);
    }
}

TEST_F(ModIntakeTest, ARecoveryThatFailsIsTriedAgainAndLosesNothing) {
    PutFile(outside_ / "new.zip", Pack(Packing::Zip, kNewMod));
    std::string recovery;
    const auto run = [&](std::size_t number, std::size_t again, Fault fault) {
        EXPECT_FALSE(disk_->RemoveTree(Mods()));
        temp_.Put(kOldMod);
        const std::string old = Files();
        FaultyFileSystem faulty(*disk_);
        faulty.Arm(number, Fault::EndBefore);
        Take(faulty, "new.zip");
        FaultyFileSystem faultyAgain(*disk_);
        faultyAgain.Arm(again, fault);
        RecoverMods(faultyAgain, Mods());
        RecoverMods(*disk_, Mods());
        if (Files() != kReplaced) {
            EXPECT_EQ(Files(), old);
        }
        recovery = faultyAgain.Trace();
        return faulty.Trace().size();
    };
    const std::size_t last = run(0, 0, Fault::None);
    for (std::size_t number = last - 25; number <= last; ++number) {
        SCOPED_TRACE(number);
        run(number, 0, Fault::None);
        SweepFaults(std::string(recovery), kFaults,
                    [&](std::size_t again, Fault fault) { run(number, again, fault); });
    }
}

} // namespace
} // namespace quillbay::test
