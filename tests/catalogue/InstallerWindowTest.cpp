#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace quillbay {
namespace {

class InstallerWindow : public test::SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        opened = &OpenWindow("menuManagerFileInstaller", "frmInstaller");
        ASSERT_TRUE(test::WaitFor([&] { return opened->isActiveWindow(); }));
    }
    void Press(const char* button) const { Control<QPushButton>(*opened, button).click(); }
    QListWidget& List(const char* name) const { return Control<QListWidget>(*opened, name); }
    void Check(const char* list, const char* row, Qt::CheckState state) const {
        List(list).findItems(QLatin1String(row), Qt::MatchExactly).at(0)->setCheckState(state);
    }
    /// The rows, sorted, with `+` or `-` for their check.
    QString Rows(const char* name) const {
        QStringList rows;
        for (int at = 0; at < List(name).count(); ++at) {
            const auto* row = List(name).item(at);
            const QVariant state = row->data(Qt::CheckStateRole);
            rows += row->text() + (state.isNull() ? "" : state == Qt::Checked ? "+" : "-");
        }
        rows.sort();
        return rows.join(' ');
    }
    /// The types, and which of Select All, Select None and Install can be pressed.
    QString Types() const {
        QString shown = Rows("lstFolders") + ' ';
        for (const char* name : {"cmdSelectAll", "cmdSelectNone", "cmdInstall"})
            shown += Control<QPushButton>(*opened, name).isEnabled() ? name[3] == 'I' ? 'I' : name[9] : '.';
        return shown;
    }
    void ClickFirstMod() const {
        auto& list = List("lstChooser");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    }

    QWidget* opened = nullptr;
};

TEST_F(InstallerWindow, KeepsChecksOfTypesFilesAndButtonsConsistent) {
    for (const char* file : {"a.bzn", "b.bzn", "t.tga", "s.wav"})
        Write(QStringLiteral("program/mods/Heap/") + file, file);
    Open();
    EXPECT_EQ(Types(), "Bzn+ Textures\\Rgb+ .NI");
    EXPECT_EQ(Rows("lstFiles"), "");

    List("lstFolders").setCurrentRow(0);
    Check("lstFiles", "a.bzn", Qt::Unchecked);
    EXPECT_EQ(Types(), "Bzn+ Textures\\Rgb+ .NI");
    Check("lstFiles", "b.bzn", Qt::Unchecked);
    EXPECT_EQ(Types(), "Bzn- Textures\\Rgb+ ANI");
    Check("lstFiles", "b.bzn", Qt::Checked);
    EXPECT_EQ(Types(), "Bzn+ Textures\\Rgb+ .NI");

    // Showing and unchecking another type leaves these flags alone.
    List("lstFolders").setCurrentRow(1);
    Check("lstFolders", "Textures\\Rgb", Qt::Unchecked);
    EXPECT_EQ(Rows("lstFiles"), "t.tga-");
    List("lstFolders").setCurrentRow(0);
    EXPECT_EQ(Rows("lstFiles"), "a.bzn- b.bzn+");

    Press("cmdSelectNone");
    EXPECT_EQ(Types() + Rows("lstFiles"), "Bzn- Textures\\Rgb- A..a.bzn- b.bzn-");
    EXPECT_TRUE(List("lstFolders").hasFocus());
    Press("cmdSelectAll");
    EXPECT_EQ(Types() + Rows("lstFiles"), "Bzn+ Textures\\Rgb+ .NIa.bzn+ b.bzn+");

    Check("lstFiles", "a.bzn", Qt::Unchecked);
    Check("lstFolders", "Textures\\Rgb", Qt::Unchecked);
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::Ok, [this](QMessageBox&) { EXPECT_FALSE(List("lstFiles").isEnabled()); });
    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(0).text, "1 file installed.");
    EXPECT_EQ(boxes.Seen().at(0).title, "Quillbay");
    EXPECT_EQ(Read("program/mods/Heap/bzn/b.bzn"), "b.bzn");
    EXPECT_TRUE(List("lstChooser").hasFocus() && List("lstFiles").isEnabled());
    EXPECT_EQ(Types() + Rows("lstFiles"), "Bzn+ Textures\\Rgb+ .NI");

    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(1).text, "2 files installed.");
    Press("cmdSelectAll");
    EXPECT_EQ(Types(), "(None) A..");
}

TEST_F(InstallerWindow, ListsAnewAndNamesWhatStays) {
    MakeFolder("program/mods/Heap & Co/bzn/a.bzn");
    Write("program/mods/file.bzn", "");
    Open();
    EXPECT_EQ(Types() + Rows("lstChooser"), "(None) A..Heap & Co");
    Write("program/mods/Heap & Co/a.bzn", "a");
    ClickFirstMod();
    test::AnswerBoxes boxes;
    Press("cmdInstall");
    EXPECT_EQ(boxes.Seen().at(0).text, "No files installed. These could not be moved: a.bzn.");

    QTest::keyClick(&List("lstChooser"), Qt::Key_Return);
    ASSERT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(QString::fromStdString(shell.opened[0].target).replace('\\', '/'),
              Path("program/mods/Heap & Co"));
}

TEST_F(InstallerWindow, HelpsWithoutMods) {
    Open();
    ClickFirstMod();
    QTest::keyClick(&List("lstChooser"), Qt::Key_Return);
    EXPECT_EQ(Types() + Rows("lstChooser"), " ...(No mods found.)");
    EXPECT_TRUE(shell.opened.empty());
    auto& box = Control<QComboBox>(*opened, "cboBox");
    const auto& help = Control<QLabel>(*opened, "lblHelp");
    EXPECT_EQ(box.currentText(), "bzn");
    EXPECT_EQ(help.text(), "Files included: *.bzn\nCopied to: bzn");
    box.setCurrentIndex(17);
    EXPECT_TRUE(help.text().endsWith("Copied to: bitmaps\\AdmiralsLog\\ShipImages"));
    box.setEditText("SOUNDS");
    box.setEditText("sound");
    EXPECT_EQ(help.text(), "Files included: *.wav\nCopied to: Sounds");
}

} // namespace
} // namespace quillbay
