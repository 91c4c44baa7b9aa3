#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>

namespace quillbay::test {
namespace {

constexpr char kNoFile[] = "(File 'ModInfo.txt' not found)";

class Editor : public SelectorFixture {
protected:
    void Open() {
        ASSERT_TRUE(Start());
        editor = &OpenWindow("menuModEdit", "frmEditModInfo");
    }
    QComboBox& Combo() const { return Control<QComboBox>(*editor, "cboMod"); }
    QLineEdit& Author() const { return Control<QLineEdit>(*editor, "txtAuthor"); }
    QLabel& Label(const char* name) const { return Control<QLabel>(*editor, name); }
    void Make() const { Control<QPushButton>(*editor, "cmdMakeFile").click(); }

    QWidget* editor = nullptr;
};

TEST_F(Editor, OpensEmptyAndPreviewsWhatIsTypedOrThePanel) {
    MakeFolder("program/mods/Alpha");
    Write("program/mods/loose.txt", "no row");
    Open();
    EXPECT_TRUE(Item("menuModEdit").isChecked());
    EXPECT_EQ(Combo().count(), 1);
    EXPECT_EQ(Combo().currentText(), "");
    EXPECT_EQ(Label("lblModsOtherHeading").text(), "Other: ");
    for (const char* text : {"<b>A && B", "", "   "}) {
        Author().setText(text);
        EXPECT_EQ(Label("lblModsMaker").text(), *text == '<' ? text : kNoFile);
        EXPECT_EQ(Label("lblModsDescription").text(), kNoFile);
    }
    for (const QLabel* label : editor->findChildren<QLabel*>(QRegularExpression("^lblMods")))
        EXPECT_TRUE(label->buddy() && label->textFormat() == Qt::PlainText) << "shows access marks or markup";
    Control<QPushButton>(*editor, "cmdClear").click();
    EXPECT_EQ(Author().text(), "");

    AnswerBoxes boxes;
    Make();
    EXPECT_EQ(boxes.Seen().at(0).title + ": " + boxes.Seen().at(0).text, "Quillbay: Please select a mod.");
    editor->close();
    EXPECT_TRUE(WaitFor([&] { return !Item("menuModEdit").isChecked(); }));
}

TEST_F(Editor, WritesTheFileOfTheAddonThatIsChosenByItsPlace) {
    MakeFolder("program/mods/Alpha/Addon/Maps");
    MakeFolder("program/mods/Bravo/Addon/Maps");
    Open();
    Author().setText("Tom");
    Control<QPlainTextEdit>(*editor, "txtDescription").setPlainText("one\ntwo\u00A0\u20AC");
    Combo().setCurrentIndex(Combo().findData("Bravo\\Addon\\Maps"));
    EXPECT_EQ(Mods().row(Mods().selectedItems().value(0)), 3);

    const QString file = "program/mods/Bravo/Addon/Maps/ModInfo.txt";
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes).Then(QMessageBox::Yes);
    Make();
    EXPECT_FALSE(Exists(file));
    Make();
    EXPECT_EQ(boxes.Seen().back().text, "Are you sure you want to make the file?");
    EXPECT_EQ(Read(file), "Author: Tom\r\n\r\nDescription: one\r\ntwo\xA0\x80\r\n\r\nVersion: \r\n\r\n"
                          "Other Heading: \r\n\r\nOther: \r\n");
    EXPECT_EQ(Label("lblModsDescription").text(), "one") << "as it is read";
    EXPECT_EQ(Control<QLineEdit>(*editor, "txtVersion").text(), "(File does not contain version number)");

    QByteArray all;
    for (int code = 0; code < 256; ++code)
        if (code != '\r') all += static_cast<char>(code);
    Write("program/mods/Alpha/ModInfo.txt", "Other: " + all + "\rAuthor: " + all);
    Mods().setCurrentRow(0);
    Make();
    const QByteArray bytes = Read("program/mods/Alpha/ModInfo.txt");
    EXPECT_TRUE(bytes.startsWith("Author: " + all + "\r\n") && bytes.endsWith("Other: " + all + "\r\n"));
}

TEST_F(Editor, FollowsTheMainListButNeverLosesWhatWasTyped) {
    for (const char* mod : {"Alpha", "Bravo", "Charlie"})
        MakeFolder(QLatin1String("program/mods/") + mod);
    Open();
    Mods().setCurrentRow(1);
    EXPECT_EQ(Combo().currentText() + Author().text(), QLatin1String("Bravo") + kNoFile);

    Author().setText("typed");
    MakeFolder("program/mods/Aardvark");
    Tick();
    EXPECT_EQ(Combo().count(), 4);
    EXPECT_EQ(Combo().currentText() + Author().text(), "Bravotyped");

    QDir().rename(Path("program/mods/Bravo"), Path("program/mods/Delta"));
    Tick();
    EXPECT_EQ(SelectedText(), "Aardvark");
    EXPECT_EQ(Combo().currentText() + Author().text(), "typed") << "for no mod that nobody chose";
    Combo().setCurrentIndex(Combo().findText("Delta"));
    EXPECT_EQ(SelectedText() + Author().text(), "Deltatyped");

    Mods().setCurrentRow(0);
    QDir(Path("program/mods")).removeRecursively();
    Tick();
    EXPECT_EQ(Author().text(), kNoFile) << "no mod, no new texts";
}

TEST_F(Editor, LosesALongTextOnlyAfterAQuestionAndKeepsWhatItCannotWrite) {
    const QByteArray longValue = "Other: " + QByteArray(10'001, 'x') + "\r\n";
    Write("program/mods/Alpha/ModInfo.txt", longValue);
    MakeFolder("program/mods/Bravo");
    Open();
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::Yes).Then(QMessageBox::No).Then(QMessageBox::Yes).Then(QMessageBox::Yes);
    Combo().setCurrentIndex(Combo().findText("Alpha"));
    Author().setText("Tom");
    Make();
    EXPECT_EQ(Read("program/mods/Alpha/ModInfo.txt"), longValue);
    EXPECT_EQ(Author().text(), "Tom");
    EXPECT_TRUE(boxes.Seen().back().text.contains("lost: Other\n"));
    Make();
    EXPECT_TRUE(Read("program/mods/Alpha/ModInfo.txt").startsWith("Author: Tom\r\n"));
    ASSERT_EQ(boxes.Seen().size(), 4U);

    boxes.Then(QMessageBox::Yes).Then(QMessageBox::Ok);
    boxes.Then(QMessageBox::Yes, [&](QMessageBox&) { QDir().rmdir(Path("program/mods/Bravo")); });
    Combo().setCurrentIndex(Combo().findText("Bravo"));
    for (const QString& text : {QString::fromUtf8("\xD0\x96"), QStringLiteral("the mod goes")}) {
        Author().setText(text);
        Make();
        EXPECT_EQ(boxes.Seen().back().title, "Error!");
        EXPECT_EQ(Author().text(), text);
        EXPECT_FALSE(Exists("program/mods/Bravo/ModInfo.txt"));
    }
    EXPECT_TRUE(boxes.Seen().at(5).text.contains(QString::fromUtf8("\xD0\x96")));
}

} // namespace
} // namespace quillbay::test
