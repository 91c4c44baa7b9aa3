#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

class Selector : public SelectorFixture {};

TEST_F(Selector, StartsWithGameModsAndSettings) {
    Make({"game/ODF/ships/a.odf", "game/other/b.odf", "program/MODS/Alpha/"});
    settings.values = {{"Smooth Closing/XAxis", "true"}, {"Fade/Intensity", "300"}, {"Fade/Speed", " 12.6x"}};
    ASSERT_TRUE(Start());
    EXPECT_EQ(window->windowTitle(), "Quillbay");
    EXPECT_EQ(Control<QLabel>("lblT2NumOfFiles").text(), "2") << "those in known folders";
    EXPECT_TRUE(Exists("program/mods/Alpha"));
    EXPECT_EQ(SelectedText(), "Alpha");
    EXPECT_EQ(window->size(), QSize(473, 410)) << "at the standard font";
    EXPECT_FALSE(Item("menuManagerSmoothClosingXAxis").isChecked());
    EXPECT_TRUE(main->SmoothCloseMainWindowOnly());
    EXPECT_EQ(main->FadeIntensity, 0);
    EXPECT_EQ(main->FadeSpeed, 13);
}

class LaunchWindow : public SelectorFixture {
protected:
    LaunchWindow() {
        MakeFolder("dosdevices");
        QFile::link(Path("."), Path("dosdevices/g:"));
    }
    /// Chooses the item; what the boxes said, and then what was opened.
    QString Trigger(const char* item) {
        Item(item).trigger();
        QStringList said;
        for (; seen_ < boxes.Seen().size(); ++seen_)
            said << boxes.Seen()[seen_].title + ": " + boxes.Seen()[seen_].text;
        for (const auto& asked : shell.opened)
            said << QString::fromStdString(asked.target + ">" + asked.workingFolder);
        shell.opened.clear();
        return said.join('|').replace('\\', '/').remove(Path(".").chopped(1));
    }
    AnswerBoxes boxes;

private:
    std::size_t seen_ = 0;
};

TEST_F(LaunchWindow, StartsTheGameInThePrefixThatNamedIt) {
    for (const bool chosen : {false, true}) {
        registry.prefix = Path("named").toStdString();
        registry.otherPrefixes = !chosen;
        MakeFolder("named/dosdevices");
        QFile::link(Path("game"), Path("named/dosdevices/s:"));
        ASSERT_TRUE(Start());
        auto& outcome = Control<QLabel>("lblOutcome");
        EXPECT_EQ(outcome.text().endsWith("/named."), !chosen) << qPrintable(outcome.text());
        EXPECT_EQ(outcome.toolTip().contains(Path("named")), !chosen);
        if (chosen) main->GameDirectory += '/';
        Item("menuManagerLaunchT2").trigger();
        ASSERT_FALSE(shell.opened.empty());
        EXPECT_EQ(shell.opened.back().prefix, chosen ? "" : registry.prefix);
        EXPECT_TRUE(Read("game/T2QB Launch T2.bat").contains(chosen ? "CD G:\\game\r" : "CD S:\\\r"));
    }
}

TEST_F(LaunchWindow, EndsOnceTheBatchFileIsWrittenWhateverTheShellSays) {
    Write("game/t2qb launch t2.BAT", "old");
    ASSERT_TRUE(Start());
    QDir root(Path("."));
    root.rename("dosdevices/g:", "away");
    const QString said = Trigger("menuManagerLaunchT2");
    EXPECT_TRUE(said.startsWith("Error!: ") && said.contains("T2QB Launch T2.bat")) << qPrintable(said);
    root.rename("away", "dosdevices/g:");
    root.remove("game/Tempest2.exe");
    EXPECT_EQ(Trigger("menuManagerLaunchT2"), "") << "there is no game";
    EXPECT_EQ(Control<QLabel>("lblOutcome").text(), "There is no Tempest2.exe in the Tempest II directory.");

    shell.answer = std::make_error_code(std::errc::no_such_file_or_directory);
    EXPECT_EQ(Trigger("menuManagerLaunchZeph"), "https://tempest-fleet-command.example/>");
    boxes.Then(QMessageBox::Yes);
    EXPECT_TRUE(Trigger("menuManagerInstallMapEditor").endsWith("|game/T2QB Launch T2.bat>game"));
    EXPECT_EQ(Read("game/T2QB Launch T2.bat"), "@Echo Off\r\nCD G:\\game\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LaunchWindow, InstallsAndStartsTheMapEditor) {
    Write("game/hlvx", "in another letter case");
    ASSERT_TRUE(Start());
    MakeFolder("game/unsupportedextension_mapedit");
    EXPECT_TRUE(
        Trigger("menuManagerInstallMapEditor").startsWith("Error!: The map editor was not installed"));
    EXPECT_EQ(Control<QLabel>("lblOutcome").text(), "");
    QDir().rmdir(Path("game/unsupportedextension_mapedit"));
    Respell("game/HLVX", "game/hlvx");
    Write("game/UnsupportedExtension_mapedit", "in another letter case, too");
    boxes.Then(QMessageBox::No).ThenType("  ").Then(QMessageBox::Ok).ThenType("\u0436").Then(QMessageBox::Ok);
    boxes.ThenType(" a b");
    EXPECT_EQ(Trigger("menuManagerInstallMapEditor"),
              "Installation complete: Installation complete. Would you like to launch Tempest II now?");
    EXPECT_EQ(Read("game/HLVX") + Read("game/unsupportedextension_mapedit"), "");
    const QString question = "Enter file name: Please enter the name of the file you want to have edited.|";
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), question + "Quillbay: Invalid name.");
    EXPECT_TRUE(Trigger("menuManagerLaunchMapEditor").endsWith("\u0436"));
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), question + "game/T2QB Launch Map Editor.bat>game");
    EXPECT_TRUE(Read("game/T2QB Launch Map Editor.bat").contains("\r\nTempest2.exe /edit  a b\r\n"));
}

TEST_F(LaunchWindow, OpensFoldersAddressesAndReadmes) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Trigger("menuModCurrentModOpen") + Trigger("menuModCurrentModViewReadme"), "") << "with no mod";
    MakeMods({"M/Addon/X/a readme folder/", "M/Addon/X/My README.txt"});
    Tick();
    Mods().setCurrentRow(1);
    EXPECT_EQ(Trigger("menuModCurrentModOpen"), "program/mods/M/Addon/X>");
    EXPECT_EQ(Trigger("menuModCurrentModViewReadme"), "program/mods/M/Addon/X/My README.txt>");
    EXPECT_EQ(Trigger("menuManagarLaunchT2Dir"), "game>");
    main->GameDirectory += "/gone";
    EXPECT_EQ(Trigger("menuManagarLaunchT2Dir"), "");
    EXPECT_EQ(Trigger("menuManagerLaunchNimb"), "https://tempest-universe.example/>");
}

class Accessible : public SelectorFixture {
protected:
    static bool IsReached(const QWidget& control) {
        static const QSet<QString> neverShown{"lstSortItems", "lstPacker"};
        return (control.focusPolicy() & Qt::TabFocus) && !neverShown.contains(control.objectName());
    }
    QWidget* Opened() const {
        for (QWidget* shown : QApplication::topLevelWidgets())
            if (shown->isVisible() && shown != window.get()) return shown;
        return nullptr;
    }

    const QByteArrayList openers{"menuManagerCheckInstalledMods",
                                 "menuManagerFileInstaller",
                                 "menuManagerFindModifiedFiles",
                                 "menuManagerOptions",
                                 "menuModCompatablility",
                                 "menuModEdit",
                                 "menuModAnalyzeMod",
                                 "menuModTechTree",
                                 "menuModOpenOdfChecker",
                                 "menuHelpAbout",
                                 "menuHelpViewReadme",
                                 "menuHelpChanges",
                                 "modChangeT2Directory"};
};

TEST_F(Accessible, EscapeClosesEveryWindowFromEveryControlAndNoneGrowsWithALargeFont) {
    Write("program/FileList.txt", {});
    MakeFolder("game/odf");
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSize(2 * usual.pointSize());
    QApplication::setFont(large);
    ASSERT_TRUE(Start());
    for (const char* item : openers) {
        Item(item).trigger();
        QWidget* shown = Opened();
        ASSERT_TRUE(shown) << item;
        const QSize size = shown->size();
        for (QWidget* control : shown->findChildren<QWidget*>()) {
            if (shown->isHidden()) Item(item).trigger();
            EXPECT_EQ(shown->size(), size) << item;
            if (!IsReached(*control) || !control->isVisible() || !control->isEnabled()) continue;
            QTest::keyClick(control, Qt::Key_Escape);
            ASSERT_TRUE(WaitFor([&] { return shown->isHidden(); })) << qPrintable(control->objectName());
        }
        shown->close();
        EXPECT_TRUE(WaitFor([&] { return shown->isHidden(); }));
        EXPECT_FALSE(Item(item).isCheckable()) << item << " looks as before";
    }
    QApplication::setFont(usual);
}

} // namespace
} // namespace quillbay::test
