#include "common/window/QtText.h"
#include "library/GameDirectory.h"
#include "library/window/JobReport.h"
#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

constexpr auto kYes = QMessageBox::Yes;
constexpr auto kNo = QMessageBox::No;

class InstallWindow : public SelectorFixture {
protected:
    InstallWindow() {
        Make({"game/odf/ships/a.odf", "program/mods/Alpha/odf/ships/a.odf",
              "program/mods/Alpha/odf/ships/new.odf", "program/mods/Alpha/odf/ships/newer.odf",
              "program/mods/Alpha/Addon/Maps/bzn/new.bzn", "program/mods/Bravo/odf/ships/a.odf"});
    }
    void SetUp() override {
        ASSERT_TRUE(Start());
        onChange = [this, height = Mods().height()] {
            const QString caption = Button("Install").text() + "/" + Button("Uninstall").text();
            if (!captions.contains(caption)) captions << caption;
            auto& bar = Control<QProgressBar>("pgbPercent");
            EXPECT_TRUE(bar.isVisible());
            EXPECT_EQ(Mods().height() + bar.height(), height);
            EXPECT_FALSE(Control<QMenu>("menuMod").isEnabled());
        };
    }
    QPushButton& Button(const char* job) const {
        return Control<QPushButton>(("cmd" + std::string(job) + "Mod").c_str());
    }
    /// Clicks the button of the job, or chooses its menu item. Everything that the job takes away is back
    /// afterwards.
    void Run(const char* job, bool byButton = false) {
        SCOPED_TRACE(job);
        const int height = Mods().height();
        if (byButton)
            Button(job).click();
        else
            Item(("menuMod" + std::string(job)).c_str()).trigger();
        EXPECT_EQ(Button("Install").text() + "/" + Button("Uninstall").text(), "Install Mod/Uninstall Mod");
        EXPECT_TRUE(Button("Install").isEnabled());
        for (const char* item : {"menuModInstall", "menuModUninstall", "menuModRefreshModList"})
            EXPECT_TRUE(Item(item).isEnabled()) << item;
        for (const char* menu : {"menuSelector", "menuMod", "menuHelp"})
            EXPECT_TRUE(Control<QMenu>(menu).isEnabled()) << menu;
        EXPECT_TRUE(Control<QProgressBar>("pgbPercent").isHidden());
        EXPECT_EQ(Mods().height(), height);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
    /// The game's file that two mods replace is that of `owner`.
    void ExpectShip(const QByteArray& owner) const {
        EXPECT_EQ(Read("game/odf/ships/a.odf"), owner + "/odf/ships/a.odf");
    }

    AnswerBoxes boxes;
    QStringList captions; ///< of both buttons, as file work saw them
};

TEST_F(InstallWindow, GoesInAndOutOfTheGame) {
    const auto& outcome = Control<QLabel>("lblOutcome");
    Mods().setCurrentRow(1);
    boxes.Then(kYes).Then(kYes).Then(kYes);
    const int details = treeSizes;
    Button("Install").setFocus();
    Run("Install", true);
    EXPECT_EQ(window->focusWidget(), &Mods());
    EXPECT_EQ(treeSizes, details + 1);
    EXPECT_TRUE(Exists("game/bzn/new.bzn"));
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "3");
    EXPECT_TRUE(Button("Uninstall").isEnabled());

    Mods().setCurrentRow(0);
    EXPECT_FALSE(Button("Uninstall").isEnabled());
    Run("Install");
    ExpectShip("program/mods/Alpha");
    EXPECT_EQ(outcome.text(), "Alpha is installed: 3 files copied, 1 of the game's saved.");
    EXPECT_TRUE(outcome.toolTip().contains(QRegularExpression("3 files copied:(\nodf\\\\ships\\\\.*){3}")));

    Write("game/odf/ships/new.odf", "the player's own");
    Run("Uninstall", true);
    ExpectShip("game");
    EXPECT_EQ(Read("game/odf/ships/new.odf"), "the player's own");
    EXPECT_EQ(outcome.text(),
              "Alpha is uninstalled: 1 file removed, 1 restored, 1 kept because they are not the mod's.");
    EXPECT_TRUE(outcome.toolTip().contains("new.odf"));
    EXPECT_FALSE(Exists("program/mods/Alpha/Backup"));
    EXPECT_EQ(captions, (QStringList{"Copying files/Uninstall Mod", "Installing/Uninstall Mod",
                                     "Install Mod/Deleting files", "Install Mod/Restoring backup",
                                     "Install Mod/Deleting backup"}));
    EXPECT_EQ(Titles(boxes), "? Install Maps mod?|? Install Alpha mod?|? Uninstall Alpha mod?");
    EXPECT_EQ(boxes.Seen()[0].text, "You have selected the Maps mod. Do you want to install it?");
    EXPECT_EQ(boxes.Seen()[2].text, "Are you sure you want to uninstall the Alpha mod?");
}

TEST_F(InstallWindow, NothingChangesAfterANoOrWithoutABackup) {
    boxes.Then(kNo).Then(kYes).Then(kNo).Then(kYes).Then(kNo).Then(kYes).Then(QMessageBox::Ok);
    Run("Install");
    Run("Uninstall");
    MakeFolder("program/mods/Alpha/backup");
    Run("Install");
    QDir(Path("program/mods/Alpha")).rmdir("backup");
    Write("program/mods/Alpha/Backup", "a file");
    Run("Install");
    ExpectShip("game");
    EXPECT_EQ(Read("program/mods/Alpha/Backup"), "a file");
    EXPECT_FALSE(Exists("program/mods/Alpha/~quillbay.bak"));
    EXPECT_EQ(Titles(boxes),
              "? Install Alpha mod?|? Uninstall Alpha mod?|! Mod not installed|? Install Alpha mod?|"
              "! Continue installation?|? Install Alpha mod?|X Error!");
    EXPECT_EQ(boxes.Seen()[4].text, "It appears that the Alpha mod is already installed. Continue?");
    EXPECT_TRUE(boxes.Seen().back().text.contains(QRegularExpression(
        "because the backup could not .*Alpha", QRegularExpression::DotMatchesEverythingOption)));
}

TEST_F(InstallWindow, WithoutAGameOrWithOneInTheLibraryThereIsNoQuestion) {
    MakeFolder("program/mods2");
    QStringList refused{"", QLatin1String(kGameNotFound.data())};
    for (const char* path :
         {"game/Tempest2.exe", "program/mods", "program/MODS/bravo/", "game/../program/mods/Bravo", "gone"})
        refused << Path(path);
    QString titles;
    for (const QString& game : refused) {
        main->GameDirectory = game.toStdString();
        Run("Install");
        Run("Uninstall");
        titles += "X Error!|X Error!|";
        EXPECT_EQ(Titles(boxes) + "|", titles) << qPrintable(game);
    }
    Item("menuModRefreshModList").trigger();
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "(T2 folder not found)");
    main->GameDirectory = Path("program/mods2").toStdString();
    Run("Install");
    EXPECT_EQ(Titles(boxes), titles + "? Install Alpha mod?");
}

TEST_F(InstallWindow, WithoutRightsNothingIsDoneAndTheBoxOffersThem) {
    std::vector<std::errc> answers{std::errc{}, std::errc::operation_canceled}; // the last one is given first
    const auto press = [](QMessageBox& box) { box.buttons().last()->click(); };
    startAsAdministrator = [&] {
        const auto answer = answers.back();
        answers.pop_back();
        return answer == std::errc{} ? std::error_code{} : std::make_error_code(answer);
    };
    ASSERT_TRUE(Start());
    bool isClosed = true;
    files.hook = [&, watch = files.hook](auto operation, auto path, auto to) {
        const QString changed = ToQString(to.empty() ? path : to).replace('\\', '/');
        const bool isRead = operation == "List" || operation == "Stat" || operation == "Read" ||
                            operation == "FingerprintFile" || operation == "RealPath";
        const bool isRefused = isClosed && !isRead && changed.contains("/game");
        return isRefused ? std::make_error_code(std::errc::permission_denied) : watch(operation, path, to);
    };
    boxes.Then(kYes).Then(QMessageBox::Ok);
    Run("Install");
    EXPECT_FALSE(Exists("program/mods/Alpha/Backup"));
    EXPECT_EQ(Control<QLabel>("lblOutcome").text(), "Alpha was not installed.");
    EXPECT_TRUE(boxes.Seen().back().text.contains("write there")) << boxes.Seen().back().text.toStdString();

    isClosed = false;
    boxes.Then(kYes);
    Run("Install");
    isClosed = true;
    boxes.Then(kYes).Then(QMessageBox::NoButton, press);
    Run("Uninstall");
    EXPECT_TRUE(boxes.Seen().back().text.contains(
        QRegularExpression("still counts as.*write there", QRegularExpression::DotMatchesEverythingOption)));
    EXPECT_TRUE(Exists("game/odf/ships/new.odf"));

    Write("game/T2QB Launch T2.bat", "of an earlier start");
    boxes.Then(QMessageBox::Ok).Then(QMessageBox::NoButton, press);
    Item("menuManagerLaunchT2").trigger();
    EXPECT_TRUE(boxes.Seen().back().text.contains("write there"));
    EXPECT_EQ(main->Phase, ProgramPhase::Running);
    Item("menuManagerInstallMapEditor").trigger();
    EXPECT_EQ(main->Phase, ProgramPhase::Ended);
    EXPECT_EQ(Titles(boxes),
              "? Install Alpha mod?|X Error!|? Install Alpha mod?|? Uninstall Alpha mod?|X Error!|"
              "X Error!|X Error!");
    EXPECT_EQ(Read("game/T2QB Launch T2.bat"), "of an earlier start");
    EXPECT_TRUE(shell.opened.empty());
}

TEST_F(InstallWindow, ActsOnTheModThatTheQuestionNamed) {
    // Another mod takes the first row and the selection while the question is open.
    boxes.Then(kYes, [this](QMessageBox&) {
        MakeMods({"Aaa/odf/ships/a.odf"});
        Write("program/mods/Aaa/ModInfo.txt", "Author: first in the list");
        Tick();
        Mods().setCurrentRow(0);
        EXPECT_FALSE(Button("Install").isEnabled());
    });
    Run("Install");
    ExpectShip("program/mods/Alpha");
    EXPECT_EQ(SelectedText(), "Aaa");

    for (const bool install : {true, false}) {
        Mods().setCurrentRow(3);
        ASSERT_EQ(SelectedText(), "Bravo");
        boxes.Then(kYes, [this](QMessageBox&) {
            Respell("program/mods/Bravo", "program/mods/bravo"); // which is another mod
        });
        if (!install) boxes.Then(kYes);
        boxes.Then(QMessageBox::Ok);
        Run(install ? "Install" : "Uninstall");
        EXPECT_TRUE(Titles(boxes).endsWith("|! Folder not found."));
        ExpectShip("program/mods/Alpha");
        EXPECT_EQ(Control<QLabel>("lblModsMaker").text(), "first in the list");
        Respell("program/mods/bravo", "program/mods/Bravo");
        Tick();
    }
}

TEST_F(InstallWindow, UninstallsAllTheNewestFirstUntilOneStays) {
    const auto& outcome = Control<QLabel>("lblOutcome");
    QWidget& list = OpenWindow("menuManagerCheckInstalledMods", "frmInstalledMods");
    auto& uninstallAll = Control<QAction>(list, "menuInstalledModsUninstallAll");
    uninstallAll.trigger();
    EXPECT_EQ(outcome.text(), "No mod is installed.");
    for (const int row : {2, 1, 0}) {
        Mods().setCurrentRow(row);
        boxes.Then(kYes);
        Run("Install");
    }
    Make({"program/mods/Alpha/Addon/Maps/Backup/stranger"});
    boxes.Then(kNo).Then(kYes).Then(QMessageBox::Ok).Then(kYes);
    uninstallAll.trigger();
    ExpectShip("program/mods/Alpha");
    uninstallAll.trigger();
    ExpectShip("program/mods/Bravo");
    EXPECT_EQ(outcome.text().section(':', 0, 0), "1 mod is uninstalled, Maps still counts as installed");
    EXPECT_TRUE(boxes.Seen().back().text.startsWith("Maps: The mod's Backup folder stays"));
    QFile::remove(Path("program/mods/Alpha/Addon/Maps/Backup/stranger"));
    uninstallAll.trigger();
    ExpectShip("game");
    EXPECT_FALSE(Exists("game/bzn/new.bzn"));
    EXPECT_EQ(outcome.text(), "2 mods are uninstalled: 1 file restored.");
    EXPECT_EQ(Titles(boxes).section('|', 3),
              "? Uninstall all mods?|? Uninstall all mods?|X Error!|? Uninstall all mods?");
    EXPECT_EQ(boxes.Seen()[3].text, "Are you sure you want to uninstall all installed mods (3)?");
    EXPECT_EQ(boxes.Seen()[3].informative, "In this order: Alpha, Maps, Bravo.");
}

TEST_F(InstallWindow, SaysBeforehandHowTheFilesStandAndAfterwardsWhatWentWhere) {
    const auto& outcome = Control<QLabel>("lblOutcome");
    const auto informative = [this] { return boxes.Seen().back().informative; };
    const auto run = [&](int row, const char* job, int questions) {
        Mods().setCurrentRow(row);
        for (; questions > 0; --questions)
            boxes.Then(kYes);
        Run(job);
    };
    Write("program/mods/Bravo/odf/ships/a.odf", "of another size");
    run(0, "Install", 1);
    EXPECT_EQ(informative(), "3 files: 1 replaces the game's.");
    run(2, "Install", 1);
    EXPECT_EQ(informative(), "1 file: 1 Alpha's.");
    run(0, "Uninstall", 0);
    EXPECT_EQ(informative(), "2 of 3 files are as installed, 1 was replaced by Bravo.");
    run(0, "Install", 2);
    EXPECT_EQ(boxes.Seen()[boxes.Seen().size() - 2].informative, "3 files: 1 Bravo's, 2 are there already.");
    EXPECT_EQ(outcome.text(), "Alpha is installed: 3 files copied, 1 of Bravo's replaced.");

    Write("game/odf/ships/a.odf", "patched");
    QDir(Path("game/odf/ships")).remove("new.odf");
    Open("menuManagerCheckInstalledMods", "frmInstalledMods");
    auto& rows = In<QListWidget>("lstCurrentMods");
    QHelpEvent hover(QEvent::ToolTip, rows.visualItemRect(rows.item(0)).center(), QPoint());
    QApplication::sendEvent(rows.viewport(), &hover);
    EXPECT_TRUE(rows.item(0)->toolTip().contains("1 of 3 files are in place, 1 changed, 1 missing."))
        << rows.item(0)->toolTip().toStdString();

    window->raise();
    run(0, "Uninstall", 1);
    EXPECT_EQ(
        informative(),
        "1 of 3 files are as installed, 1 was changed since and will be kept in Changed, 1 is missing.");
    EXPECT_EQ(outcome.text(), "Alpha is uninstalled: 1 file removed, 1 restored, 1 kept in Changed.");
    EXPECT_TRUE(outcome.toolTip().contains("Changed"));
    ExpectShip("game");
}

TEST(JobReport, NamesWhatIsOpenInAnotherProgram) {
    InstallResult result;
    result.installed = 17;
    result.firstInstalled.assign(kNamedFiles, "c.odf");
    result.notCopied = {{"a.odf", std::make_error_code(std::errc::device_or_resource_busy)},
                        {"b.odf", std::make_error_code(std::errc::permission_denied)}};
    const auto text = Describe(result, "Alpha");
    EXPECT_EQ(text.Sentence(), "Alpha is installed: 17 files copied, 2 could not be copied. "
                               "1 of them is open in another program.");
    EXPECT_TRUE(text.ToolTip().contains("c.odf\nand 2 more\n"));
    EXPECT_TRUE(text.ToolTip().endsWith("a.odf: is open in another program\nb.odf: Permission denied"))
        << text.ToolTip().toStdString();
}

TEST_F(InstallWindow, NamesWhatWasNotCopiedAndSaysThatABackupStays) {
    const auto& outcome = Control<QLabel>("lblOutcome");
    files.hook = [](auto operation, auto path, auto) {
        const bool isGames = path.find("mods") == path.npos && path.ends_with("new.odf");
        const bool refused = (operation == "HardLink" || operation.ends_with("Copy")) &&
                             (isGames || path.ends_with("newer.odf"));
        return std::make_error_code(refused ? std::errc::io_error : std::errc());
    };
    boxes.Then(kYes).Then(kYes).Then(kYes);
    Make({"game/odf/ships/new.odf"});
    Run("Install");
    EXPECT_TRUE(
        outcome.text().endsWith(" 1 skipped because the game's could not be saved, 1 could not be copied."))
        << qPrintable(outcome.text());
    for (const char* file : {"new.odf", "newer.odf"})
        EXPECT_TRUE(outcome.toolTip().contains(file)) << file;
    MakeMods({"Alpha/Backup/mine.txt"});
    Mods().setCurrentRow(2);
    Run("Install");
    Mods().setCurrentRow(0);
    Run("Uninstall");
    EXPECT_EQ(Titles(boxes), "? Install Alpha mod?|? Install Bravo mod?|? Uninstall Alpha mod?|X Error!");
    EXPECT_TRUE(outcome.text().contains("Bravo's file went with it")) << qPrintable(outcome.text());
    EXPECT_TRUE(boxes.Seen().back().text.contains("mine.txt"));
    EXPECT_TRUE(outcome.text().startsWith("Alpha still counts as installed"));
}

} // namespace
} // namespace quillbay::test
