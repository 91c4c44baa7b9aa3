#include "support/ArchiveMaker.h"
#include "support/SelectorFixtureWindow.h"

#include <set>

namespace quillbay::test {
namespace {

using Fault = FaultyFileSystem::Fault;
using Files = std::map<QString, QByteArray>;

class CommandSweep;

/// A command that changes files, in the real windows.
struct Command {
    const char* name;
    const char* asked;           ///< what the user asks to delete or replace begins with this path
    void (*open)(CommandSweep&); ///< what the user does first, with the first mod selected
    void (*run)(CommandSweep&);  ///< the step that changes files
    bool isAboutFolders = false;
};

class CommandSweep : public SelectorFixture, public testing::WithParamInterface<Command> {
public:
    using SelectorFixture::Drop;
    using SelectorFixture::In;
    using SelectorFixture::Make;
    using SelectorFixture::Mods;
    using SelectorFixture::Open;
    using SelectorFixture::Press;

    void Trigger(const char* item) const { Item(item).trigger(); }
    void OpenFinder() {
        Open("menuManagerFindModifiedFiles", "frmFindModifiedFiles");
        In<QLineEdit>("txtPath").setText(Path("target"));
        Press("cmdStart");
    }
    void OpenChecker(bool cleanUp) {
        Open("menuModOpenOdfChecker", "frmOdfChecker");
        Press("chkMsgBoxes");
        if (cleanUp) {
            Write("game/odf/ships/quote.odf", "// unused\r\nrace = \"Terran\"\r\n");
            return Press("chkRemoveUnusedLines");
        }
        Press("cmdStart");
        In<QPlainTextEdit>("txtOdf").setPlainText("race = \"Terran\"\nmended");
    }
    void OpenAnalyzer() {
        Open("menuModAnalyzeMod", "frmAnalyzer");
        ClickNode("Mod");
        auto& list = In<QListWidget>("lstFiles");
        list.setCurrentItem(list.findItems("loose.wav", Qt::MatchExactly).at(0));
    }
    void ClickNode(const char* mod) const {
        auto& tree = In<QTreeWidget>("TreeViewer");
        tree.setCurrentItem(tree.findItems(mod, Qt::MatchExactly | Qt::MatchRecursive).at(0));
    }

protected:
    struct Outcome {
        Files before, after;
        std::string said; ///< the boxes and the line at the foot
        std::string trace;
        bool launches = false; ///< which is the end of the program, and says enough
    };

    Outcome Run(std::size_t number, Fault fault);
    Files Disk() const;
    void CheckUsable() const;
};

Files CommandSweep::Disk() const {
    Files state;
    const auto kinds = GetParam().isAboutFolders ? QDir::AllEntries : QDir::Files;
    QDirIterator found(Path(""), kinds | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString path = QDir(Path("")).relativeFilePath(found.next());
        // The record holds the time, and so does the link where it is a file of its own kind.
        if (path.endsWith("/~quillbay.record") || path.startsWith("dosdevices/")) continue;
        state[path] = found.fileInfo().isDir() ? QByteArray("(folder)") : Read(path);
    }
    return state;
}

/// The command on an untouched disk, with the fault in its `number`-th operation.
CommandSweep::Outcome CommandSweep::Run(std::size_t number, Fault fault) {
    for (const char* folder : {"game", "program", "target"})
        QDir(Path(folder)).removeRecursively();
    for (const char* file :
         {"game/Tempest2.exe", "game/odf/ships/a.odf", "game/odf/ships/new.odf", "game/readme.txt",
          "program/mods/Mod/odf/ships/a.odf", "program/mods/Mod/sod/added.sod", "program/mods/Mod/readme.txt",
          "program/mods/Mod/loose.wav", "program/mods/Mod/loose.bzn", "program/mods/Mod/ModInfo.txt",
          "program/mods/Mod/Addon/Extra/c.txt", "program/mods/Other/odf/ships/b.odf", "target/own.txt"})
        Write(file, QByteArray("bytes of ") + file);
    Write("game/odf/ships/quote.odf", "// unused\r\nrace = \"Terran\r\n");
    const std::string archive = Pack(Packing::SevenZip, "New/odf/a=1 New/Addon/X/odf/b=2 notes=3 readme=4");
    Write("dropped.7z", QByteArray::fromStdString(archive));
    Write("program/FileList.txt", "folder = 'rootdir'\r\nTempest2.exe;1;1/1/2001 1:00:00 AM\r\n");

    for (const char* recorded : {"Tempest2.exe", "readme.txt", "odf/ships/a.odf", "odf/ships/new.odf",
                                 "odf/ships/quote.odf"}) // with one time in all runs
        EXPECT_FALSE(
            disk->SetModified(Path(QStringLiteral("game/%1").arg(recorded)).toStdString(), FileTime{}));

    MakeFolder("dosdevices");
    QFile::link(Path("."), Path("dosdevices/g:"));
    FaultyFileSystem faulty(*disk);
    AnswerBoxes boxes;
    for (int answers = 0; answers < 9; ++answers)
        boxes.Then(QMessageBox::Yes, {}, "map");
    opened = nullptr;
    EXPECT_TRUE(Start(faulty));
    Mods().setCurrentRow(0);
    if (GetParam().open) GetParam().open(*this);

    Outcome outcome;
    outcome.before = Disk();
    const auto seen = static_cast<std::ptrdiff_t>(boxes.Seen().size());
    faulty.Arm(number, fault, number % 2 == 0 ? std::errc::no_space_on_device : std::errc::permission_denied);
    GetParam().run(*this);
    outcome.trace = faulty.Trace();
    faulty.Arm(0, Fault::None);
    outcome.after = Disk();
    for (auto box = boxes.Seen().begin() + seen; box != boxes.Seen().end(); ++box)
        outcome.said += (box->text + box->informative + '|').toStdString();
    outcome.said += Control<QLabel>("lblOutcome").text().toStdString();
    outcome.launches = !std::exchange(shell.opened, {}).empty();
    if (fault == Fault::Fail && !outcome.launches) CheckUsable();
    End();
    return outcome;
}

void CommandSweep::CheckUsable() const {
    EXPECT_TRUE(window->isVisible() && window->isEnabled() && Mods().isEnabled());
    EXPECT_TRUE(Control<QMenu>("menuMod").isEnabled());
    EXPECT_FALSE(QApplication::overrideCursor() || QApplication::activeModalWidget());
    EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isHidden());
    EXPECT_TRUE(!opened || (opened->isVisible() && opened->isEnabled()));
}

/// Every file is one of before or of a whole run, and one that is gone was asked away and is replaced.
std::string Losses(const Files& before, const Files& whole, const Files& met, bool ended, const char* asked) {
    std::set<QByteArray> known, found;
    for (const Files* state : {&before, &whole})
        for (const auto& [path, bytes] : *state)
            known.insert(bytes);
    QString losses;
    for (const auto& [path, bytes] : met) {
        found.insert(bytes);
        if (!known.contains(bytes) && !(ended && path.contains("~quillbay")))
            losses += "half: " + path + '\n';
    }
    for (const auto& [path, bytes] : before) {
        if (found.contains(bytes)) continue;
        const auto replaced = whole.find(path);
        const bool fair =
            *asked && path.startsWith(asked) && (replaced == whole.end() || found.contains(replaced->second));
        if (!fair) losses += "lost: " + path + '\n';
    }
    return losses.toStdString();
}

TEST_P(CommandSweep, LosesNothingStaysUsableAndSaysWhatHappened) {
    const Outcome whole = Run(0, Fault::None);
    ASSERT_FALSE(whole.trace.empty() || (whole.said.ends_with('|') && !whole.launches)) << whole.said;
    SweepFaults(
        whole.trace, {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndAfter},
        [&](std::size_t number, Fault fault) {
            const bool ends = fault != Fault::Fail;
            const Outcome outcome = Run(number, fault);
            EXPECT_EQ(Losses(outcome.before, whole.after, outcome.after, ends, GetParam().asked), "");
            // To stop in silence is not to say it.
            EXPECT_TRUE(ends || outcome.after == whole.after || !whole.said.starts_with(outcome.said))
                << outcome.said;
        },
        40);
}

using It = CommandSweep&;
const Command kCommands[] = {
    {"Install", "", nullptr, [](It it) { it.Trigger("menuModInstall"); }},
    {"Uninstall", "", [](It it) { it.Trigger("menuModInstall"); },
     [](It it) { it.Trigger("menuModUninstall"); }},
    {"RemoveMod", "program/mods/Mod/", nullptr, [](It it) { it.Trigger("menuModCurrentModRemoveMod"); }},
    {"AddMods", "", nullptr, [](It it) { it.Drop("dropped.7z"); }},
    {"MakeFolders", "", nullptr, [](It it) { it.Trigger("menuModCurrentModSubfolders"); }, true},
    {"RemoveFolders", "", [](It it) { it.Trigger("menuModCurrentModSubfolders"); },
     [](It it) { it.Trigger("menuModCurrentModRemoveSubfolders"); }, true},
    {"ModInfo", "program/mods/Mod/ModInfo.txt",
     [](It it) {
         it.Open("menuModEdit", "frmEditModInfo");
         auto& mods = it.In<QComboBox>("cboMod");
         mods.setCurrentIndex(mods.findData("Mod"));
         it.In<QLineEdit>("txtAuthor").setText("new author");
     },
     [](It it) { it.Press("cmdMakeFile"); }},
    {"Recompile", "program/FileList.txt", nullptr, [](It it) { it.Trigger("menuManagerModFilesRecompile"); }},
    {"Sort", "",
     [](It it) {
         it.Open("menuManagerFileInstaller", "frmInstaller");
         auto& mods = it.In<QListWidget>("lstChooser");
         mods.setCurrentItem(mods.findItems("Mod", Qt::MatchExactly).at(0));
         it.Press("cmdSelectAll");
     },
     [](It it) { it.Press("cmdInstall"); }},
    {"LaunchGame", "", nullptr, [](It it) { it.Trigger("menuManagerLaunchT2"); }},
    {"InstallMapEditor", "", nullptr, [](It it) { it.Trigger("menuManagerInstallMapEditor"); }},
    {"LaunchMapEditor", "",
     [](It it) {
         it.Make({"game/HLVX", "game/unsupportedextension_mapedit"});
     },
     [](It it) { it.Trigger("menuManagerLaunchMapEditor"); }},
    {"FinderCopy", "", [](It it) { it.OpenFinder(); }, [](It it) { it.Press("cmdCopy"); }},
    {"FinderMove", "", [](It it) { it.OpenFinder(); }, [](It it) { it.Press("cmdMove"); }},
    {"FinderDelete", "game/", [](It it) { it.OpenFinder(); }, [](It it) { it.Press("cmdDelete"); }},
    {"OdfRepair", "game/odf/ships/quote.odf", [](It it) { it.OpenChecker(false); },
     [](It it) { it.Press("cmdContinue"); }},
    {"OdfCleanUp", "game/odf/ships/quote.odf", [](It it) { it.OpenChecker(true); },
     [](It it) { it.Press("cmdStart"); }},
    {"AnalyzerPaste", "",
     [](It it) {
         it.OpenAnalyzer();
         it.In<QAction>("menuLstFilesRightCopy").trigger();
         it.ClickNode("Other");
     },
     [](It it) { it.In<QAction>("menuLstFilesRightPaste").trigger(); }},
    {"AnalyzerRemove", "program/mods/Mod/loose.wav", [](It it) { it.OpenAnalyzer(); },
     [](It it) { it.In<QAction>("menuLstFilesRightRemove").trigger(); }},
};

INSTANTIATE_TEST_SUITE_P(Commands, CommandSweep, testing::ValuesIn(kCommands),
                         [](const auto& command) { return std::string(command.param.name); });

} // namespace
} // namespace quillbay::test
