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
    /// Chooses the item; what the boxes said.
    QStringList Trigger(const char* item) {
        const std::size_t before = boxes.Seen().size();
        Item(item).trigger();
        QStringList said;
        for (std::size_t at = before; at < boxes.Seen().size(); ++at)
            said << boxes.Seen()[at].title + ": " + boxes.Seen()[at].text;
        return said;
    }
    AnswerBoxes boxes;
};

TEST_F(LaunchWindow, StaysOpenUntilTheGameCanBeStarted) {
    ASSERT_TRUE(Start());
    const auto refuses = [&](const char* item, const char* part) {
        const QStringList said = Trigger(item);
        EXPECT_TRUE(said.size() == 1 && said[0].startsWith("Error!: ") && said[0].contains(part))
            << qPrintable(said.join('|'));
    };
    shell.answer = std::make_error_code(std::errc::no_such_file_or_directory);
    refuses("menuManagerLaunchT2", "wine");
    refuses("menuManagerLaunchZeph", "xdg-open");
    shell = {};
    QDir root(Path("."));
    root.rename("game/T2QB Launch T2.bat", "t2.bat");
    root.mkpath("game/T2QB Launch T2.bat/in the way");
    refuses("menuManagerLaunchT2", "T2QB Launch T2.bat");
    root.rename("game/T2QB Launch T2.bat", "t2qb launch t2.BAT");
    root.rename("dosdevices/g:", "dosdevices/none");
    refuses("menuManagerLaunchT2", "T2QB Launch T2.bat");
    root.rename("game/Tempest2.exe", "exe");
    refuses("menuManagerLaunchT2", "Tempest2.exe");
    root.rename("game", "gone");
    refuses("menuManagerInstallMapEditor", "unsupportedextension_mapedit");
    EXPECT_TRUE(Trigger("menuManagarLaunchT2Dir").empty());
    EXPECT_TRUE(shell.opened.empty() && window->isVisible());

    root.rename("gone", "game");
    root.rename("exe", "game/TEMPEST2.EXE");
    root.rename("dosdevices/none", "dosdevices/g:");
    EXPECT_TRUE(Trigger("menuManagerLaunchT2").empty());
    EXPECT_EQ(Read("game/T2QB Launch T2.bat"), "@Echo Off\r\nCD G:\\game\r\nTempest2.exe\r\nExit\r\nCls\r\n");
    ASSERT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(shell.opened[0].target, Path("game").toStdString() + "\\T2QB Launch T2.bat");
    EXPECT_EQ(shell.opened[0].workingFolder, Path("game").toStdString());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LaunchWindow, InstallsAndStartsTheMapEditor) {
    Write("game/hlvx", "in another letter case");
    Write("game/unsupportedextension_mapedit", "old");
    ASSERT_TRUE(Start());
    boxes.Then(QMessageBox::No).ThenType("  ").Then(QMessageBox::Ok).ThenType("\u0436").Then(QMessageBox::Ok);
    boxes.ThenType(" a b");
    EXPECT_EQ(Trigger("menuManagerInstallMapEditor"),
              QStringList{"Installation complete: Installation complete. Would you like to launch Tempest II "
                          "now?"});
    EXPECT_EQ(Read("game/HLVX") + Read("game/unsupportedextension_mapedit"), "");
    const QString question = "Enter file name: Please enter the name of the file you want to have edited.";
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), (QStringList{question, "Quillbay: Invalid name."}));
    EXPECT_TRUE(Trigger("menuManagerLaunchMapEditor").value(1).contains("\u0436"));
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_EQ(Trigger("menuManagerLaunchMapEditor"), QStringList{question});
    EXPECT_TRUE(Read("game/T2QB Launch Map Editor.bat").contains("\r\nTempest2.exe /edit  a b\r\n"));
    EXPECT_EQ(shell.opened.size(), 1U);
}

TEST_F(LaunchWindow, OpensFoldersAddressesAndReadmes) {
    ASSERT_TRUE(Start());
    const auto open = [this] {
        for (const char* item : {"menuModCurrentModOpen", "menuModCurrentModViewReadme",
                                 "menuManagarLaunchT2Dir", "menuManagerLaunchNimb"})
            EXPECT_TRUE(Trigger(item).empty());
        QStringList targets;
        for (const auto& opened : std::exchange(shell.opened, {}))
            targets << QString::fromStdString(opened.target).replace('\\', '/');
        return targets;
    };
    const QStringList always{Path("game"), "https://tempest-universe.example/"};
    EXPECT_EQ(open(), always);
    MakeFolder("program/mods/M/Addon/X/a readme folder");
    Write("program/mods/M/Addon/X/My README.txt", "x");
    Tick();
    Mods().setCurrentRow(1);
    const QString addon = Path("program/mods/M/Addon/X");
    EXPECT_EQ(open(), (QStringList{addon, addon + "/My README.txt"} + always));
}

} // namespace
} // namespace quillbay::test
