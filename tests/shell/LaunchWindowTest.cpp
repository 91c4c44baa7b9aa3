#include "effects/EffectHost.h"
#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QDir>
#include <QFile>

namespace quillbay::test {
namespace {

class LaunchWindow : public SelectorFixture {
protected:
    LaunchWindow() {
        MakeFolder("dosdevices");
        QFile::link(Path("."), Path("dosdevices/g:"));
    }
    bool Ended() const { return window->Phase == ProgramPhase::Ended; }
    /// Chooses the item; the texts of the boxes that came.
    QStringList Trigger(const char* item, AnswerBoxes& boxes) const {
        const std::size_t before = boxes.Seen().size();
        Item(item).trigger();
        QStringList texts;
        for (std::size_t at = before; at < boxes.Seen().size(); ++at)
            texts << boxes.Seen()[at].title + ": " + boxes.Seen()[at].text;
        return texts;
    }
};

TEST_F(LaunchWindow, StartsTheGameAndEnds) {
    Write("game/t2qb launch t2.BAT", "old");
    ASSERT_TRUE(Start());
    Item("menuManagerLaunchT2").trigger();
    EXPECT_EQ(Read("game/T2QB Launch T2.bat"), "@Echo Off\r\nCD G:\\game\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    ASSERT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(shell.opened[0].target, Path("game").toStdString() + "\\T2QB Launch T2.bat");
    EXPECT_EQ(shell.opened[0].workingFolder, Path("game").toStdString());
    EXPECT_TRUE(Ended());
}

TEST_F(LaunchWindow, StaysOpenWhenTheGameCannotBeStarted) {
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    shell.answer = std::make_error_code(std::errc::no_such_file_or_directory);
    EXPECT_TRUE(Trigger("menuManagerLaunchT2", boxes).value(0).contains("wine"));
    EXPECT_TRUE(Trigger("menuManagerLaunchZeph", boxes).value(0).contains("xdg-open"));
    shell.opened.clear();
    const auto refuses = [&](const char* item, const char* part) {
        const QStringList texts = Trigger(item, boxes);
        EXPECT_TRUE(texts.size() == 1 && texts[0].startsWith("Error!: ") && texts[0].contains(part))
            << qPrintable(texts.join('|'));
    };
    QFile::rename(Path("dosdevices/g:"), Path("dosdevices/none"));
    refuses("menuManagerLaunchT2", "T2QB Launch T2.bat");
    QFile::rename(Path("dosdevices/none"), Path("dosdevices/g:"));
    QFile::remove(Path("game/T2QB Launch T2.bat"));
    Write("game/T2QB Launch T2.bat/in the way", "x");
    refuses("menuManagerLaunchT2", "T2QB Launch T2.bat");
    QFile::remove(Path("game/Tempest2.exe"));
    refuses("menuManagerLaunchT2", "Tempest2.exe");
    QDir(Path("game")).removeRecursively();
    refuses("menuManagerLaunchT2", "T2QB Launch T2.bat");
    refuses("menuManagerInstallMapEditor", "unsupportedextension_mapedit");
    EXPECT_TRUE(Trigger("menuManagarLaunchT2Dir", boxes).empty());
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_FALSE(Ended());
}

TEST_F(LaunchWindow, InstallsAndStartsTheMapEditor) {
    Write("game/hlvx", "in another letter case");
    Write("game/unsupportedextension_mapedit", "old");
    ASSERT_TRUE(Start());
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::No);
    EXPECT_EQ(Trigger("menuManagerInstallMapEditor", boxes),
              QStringList{"Installation complete: Installation complete. Would you like to launch Tempest II "
                          "now?"});
    EXPECT_EQ(Read("game/HLVX"), "");
    EXPECT_EQ(Read("game/unsupportedextension_mapedit"), "");
    boxes.ThenType("  ").Then(QMessageBox::Ok).ThenType("\u0436.bzn").Then(QMessageBox::Ok).ThenType(" a b");
    const QString question = "Enter file name: Please enter the name of the file you want to have edited.";
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor", boxes),
              (QStringList{question, "Quillbay: Invalid name."}));
    EXPECT_TRUE(Trigger("menuManagerLaunchMapEditor", boxes).value(1).contains("\u0436"));
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor", boxes), QStringList{question});
    EXPECT_EQ(Read("game/T2QB Launch Map Editor.bat"),
              "@Echo Off\r\nCD G:\\game\r\nTempest2.exe /edit  a b\r\nCls\r\n");
    EXPECT_EQ(shell.opened.size(), 1U);
    EXPECT_TRUE(Ended());
}

TEST_F(LaunchWindow, OpensFoldersAddressesAndReadmes) {
    ASSERT_TRUE(Start());
    for (const char* item : {"menuModCurrentModOpen", "menuModCurrentModViewReadme",
                             "menuModCurrentModRemoveMod", "menuModCurrentModSubfolders"})
        Item(item).trigger(); // with no mod
    EXPECT_TRUE(shell.opened.empty());
    MakeFolder("program/mods/M/Addon/X/a readme folder");
    Write("program/mods/M/Addon/X/My README.txt", "x");
    Tick();
    Mods().setCurrentRow(1);
    for (const char* item : {"menuModCurrentModOpen", "menuModCurrentModViewReadme", "menuManagarLaunchT2Dir",
                             "menuManagerLaunchQuillbayDir", "menuManagerLaunchNimb"})
        Item(item).trigger();
    const std::string program = Path("program").toStdString();
    const std::string addon = program + "\\mods\\M\\Addon\\X";
    std::vector<std::string> targets;
    for (const auto& opened : shell.opened)
        targets.push_back(opened.target);
    EXPECT_EQ(targets, (std::vector<std::string>{addon, addon + "\\My README.txt", Path("game").toStdString(),
                                                 program, "https://tempest-universe.example/"}));
}

} // namespace
} // namespace quillbay::test
