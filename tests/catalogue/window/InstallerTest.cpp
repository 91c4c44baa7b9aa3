#include "support/SelectorFixtureWindow.h"

namespace quillbay {
namespace {

class InstallerWindow : public test::SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        SelectorFixture::Open("menuManagerFileInstaller", "frmInstaller");
        ASSERT_TRUE(test::WaitFor([&] { return opened->isActiveWindow(); }));
    }
    QListWidget& List(const char* name) const { return In<QListWidget>(name); }
    void Check(const char* list, const char* row, Qt::CheckState state) const {
        List(list).findItems(QLatin1String(row), Qt::MatchExactly).at(0)->setCheckState(state);
    }
    /// The rows of the lists, sorted, with `+` or `-` for their check, and whether Select All, Select None
    /// and Install can be pressed.
    std::string Shown() const {
        QString shown;
        for (const char* list : {"lstChooser", "lstFolders", "lstFiles"}) {
            QStringList rows;
            for (const auto* row : List(list).findItems({}, Qt::MatchContains)) {
                const bool hasCheck = !row->data(Qt::CheckStateRole).isNull();
                rows << row->text() + (!hasCheck ? "" : row->checkState() == Qt::Checked ? "+" : "-");
            }
            rows.sort();
            shown += rows.join(' ') + '|';
        }
        for (const char* button : {"cmdSelectAll", "cmdSelectNone", "cmdInstall"})
            shown += In<QPushButton>(button).isEnabled() ? "y" : "n";
        return shown.toStdString();
    }
    void ClickAndEnter() const {
        auto& list = List("lstChooser");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(list.currentItem()).center());
        QTest::keyClick(&list, Qt::Key_Return);
    }
};

TEST_F(InstallerWindow, KeepsChecksOfTypesFilesAndButtonsConsistent) {
    for (const char* file : {"a.bzn", "b.bzn", "t.tga", "s.wav", "ModInfo.txt"})
        Write(QStringLiteral("program/mods/Heap/") + file, file);
    Open();
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb+||nyy)");
    EXPECT_TRUE(List("lstFolders").item(0)->toolTip() == "2 files" &&
                List("lstFolders").item(1)->toolTip() == "1 file");
    List("lstFolders").setCurrentRow(0);
    Check("lstFiles", "a.bzn", Qt::Unchecked);
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb+|a.bzn- b.bzn+|nyy)");
    Check("lstFiles", "b.bzn", Qt::Unchecked);
    EXPECT_EQ(Shown(), R"(Heap|Bzn- Textures\Rgb+|a.bzn- b.bzn-|yyy)");
    Check("lstFiles", "b.bzn", Qt::Checked);
    // Showing and unchecking another type leaves these flags alone.
    List("lstFolders").setCurrentRow(1);
    Check("lstFolders", "Textures\\Rgb", Qt::Unchecked);
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb-|t.tga-|yyy)");
    List("lstFolders").setCurrentRow(0);
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb-|a.bzn- b.bzn+|yyy)");
    Press("cmdSelectNone");
    EXPECT_EQ(Shown(), R"(Heap|Bzn- Textures\Rgb-|a.bzn- b.bzn-|ynn)");
    EXPECT_TRUE(List("lstFolders").hasFocus());
    Press("cmdSelectAll");
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb+|a.bzn+ b.bzn+|nyy)");

    Check("lstFiles", "a.bzn", Qt::Unchecked);
    Check("lstFolders", "Textures\\Rgb", Qt::Unchecked);
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::Ok, [this](QMessageBox&) { EXPECT_FALSE(List("lstFiles").isEnabled()); });
    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(0).text + boxes.Seen().at(0).title, "1 file installed.Quillbay");
    EXPECT_EQ(Control<QLabel>("lblOutcome").text(), "Loose files are sorted: 1 file moved. "
                                                    "1 file fits no type and lies in the mod's own folder.");
    EXPECT_TRUE(Control<QLabel>("lblOutcome").toolTip().contains("s.wav"));
    EXPECT_EQ(opened->focusWidget(), &List("lstChooser"));
    EXPECT_TRUE(List("lstFiles").isEnabled());
    EXPECT_EQ(Shown(), R"(Heap|Bzn+ Textures\Rgb+||nyy)");
    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(1).text, "2 files installed.");
    Press("cmdSelectAll");
    EXPECT_EQ(Shown(), "Heap|(None)||ynn");
    EXPECT_EQ(List("lstFolders").item(0)->toolTip(), Control<QPushButton>(*opened, "cmdInstall").toolTip());
}

TEST_F(InstallerWindow, ListsAnewOpensAndNamesWhatStays) {
    MakeFolder("program/mods/Heap & Co/bzn/a.bzn");
    Write("program/mods/file.bzn", "");
    Open();
    EXPECT_EQ(Shown(), "Heap & Co file.bzn|(None)||ynn");
    auto& mods = List("lstChooser");
    mods.setCurrentItem(mods.findItems("Heap & Co", Qt::MatchExactly).at(0));
    QApplication::processEvents();
    Write("program/mods/Heap & Co/a.bzn", "a");
    ClickAndEnter();
    ASSERT_EQ(shell.opened.size(), 1U);
    EXPECT_TRUE(shell.opened[0].target.ends_with("Heap & Co"));
    test::AnswerBoxes boxes;
    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(0).text, "No files installed. These could not be moved: a.bzn.");
}

} // namespace
} // namespace quillbay
