#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDir>
#include <QMenu>

namespace quillbay::test {
namespace {

class LaunchWindow : public SelectorFixture {
protected:
    LaunchWindow() {
        MakeFolder("dosdevices");
        QFile::link(Path("."), Path("dosdevices/g:"));
    }
    /// Chooses the item; what the boxes said, and then what was opened.
    QString Trigger(const char* item) {
        const std::size_t before = boxes.Seen().size();
        Item(item).trigger();
        QStringList said;
        for (std::size_t at = before; at < boxes.Seen().size(); ++at)
            said << boxes.Seen()[at].title + ": " + boxes.Seen()[at].text;
        for (const auto& opened : shell.opened)
            said << QString::fromStdString(opened.target + ">" + opened.workingFolder);
        shell.opened.clear();
        return said.join('|').replace('\\', '/').remove(Path(".").chopped(1));
    }
    AnswerBoxes boxes;
};

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
    MakeFolder("program/mods/M/Addon/X/a readme folder");
    Write("program/mods/M/Addon/X/My README.txt", "x");
    Tick();
    Mods().setCurrentRow(1);
    EXPECT_EQ(Trigger("menuModCurrentModOpen"), "program/mods/M/Addon/X>");
    EXPECT_EQ(Trigger("menuModCurrentModViewReadme"), "program/mods/M/Addon/X/My README.txt>");
    EXPECT_EQ(Trigger("menuManagarLaunchT2Dir"), "game>");
    EXPECT_EQ(Trigger("menuManagerLaunchNimb"), "https://tempest-universe.example/>");
}

} // namespace
} // namespace quillbay::test
