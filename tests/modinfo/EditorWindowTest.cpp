#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

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
    QPlainTextEdit& Description() const { return Control<QPlainTextEdit>(*editor, "txtDescription"); }
    QString Preview(const char* name) const { return Control<QLabel>(*editor, name).text(); }
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
    EXPECT_EQ(Preview("lblModsOtherHeading"), "Other: ");
    for (const char* text : {"<b>A && B", "", "   "}) {
        Author().setText(text);
        EXPECT_EQ(Preview("lblModsMaker"), *text == '<' ? text : kNoFile);
        EXPECT_EQ(Preview("lblModsDescription"), kNoFile);
    }
    for (const char* name :
         {"lblModsMaker", "lblModsDescription", "lblModsVersion", "lblModsOtherHeading", "lblModsOther"}) {
        EXPECT_EQ(Control<QLabel>(*editor, name).textFormat(), Qt::PlainText) << name;
        EXPECT_NE(Control<QLabel>(*editor, name).buddy(), nullptr) << name << " would show its access mark";
    }
    Control<QPushButton>(*editor, "cmdClear").click();
    EXPECT_EQ(Author().text(), "");

    AnswerBoxes boxes;
    Make();
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].title + ": " + boxes.Seen()[0].text, "Quillbay: Please select a mod.");
    editor->close();
    EXPECT_TRUE(WaitFor([&] { return !Item("menuModEdit").isChecked(); }));
}

TEST_F(Editor, WritesTheFileOfTheAddonThatIsChosenByItsPlace) {
    MakeFolder("program/mods/Alpha/Addon/Maps");
    MakeFolder("program/mods/Bravo/Addon/Maps");
    Open();
    Author().setText("Tom");
    Description().setPlainText("one\ntwo\u00A0\u20AC");
    Combo().setCurrentIndex(3);
    EXPECT_EQ(Mods().row(Mods().selectedItems().value(0)), 3);
    EXPECT_EQ(Author().text(), "Tom") << "what was typed stays";

    const QString file = "program/mods/Bravo/Addon/Maps/ModInfo.txt";
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes).Then(QMessageBox::Yes);
    Make();
    EXPECT_FALSE(Exists(file));
    Make();
    EXPECT_EQ(boxes.Seen().back().title, "Make file?");
    EXPECT_EQ(boxes.Seen().back().text, "Are you sure you want to make the file?");
    EXPECT_EQ(Read(file), "Author: Tom\r\n\r\nDescription: one\r\ntwo\xA0\x80\r\n\r\nVersion: \r\n\r\n"
                          "Other Heading: \r\n\r\nOther: \r\n");
    EXPECT_EQ(Description().toPlainText(), "one") << "as it is read";
    EXPECT_EQ(Control<QLineEdit>(*editor, "txtVersion").text(), "(File does not contain version number)");
    EXPECT_EQ(Control<QLabel>("lblModsMaker").text(), "Tom");

    QByteArray all;
    for (int code = 0; code < 256; ++code)
        if (code != '\r') all += static_cast<char>(code);
    Write("program/mods/Alpha/ModInfo.txt", "Other: " + all + "\rAuthor: " + all);
    Mods().setCurrentRow(0);
    Make();
    EXPECT_TRUE(Read("program/mods/Alpha/ModInfo.txt").startsWith("Author: " + all + "\r\n"));
    EXPECT_TRUE(Read("program/mods/Alpha/ModInfo.txt").endsWith("Other: " + all + "\r\n"));
}

TEST_F(Editor, FollowsTheMainListButNeverLosesWhatWasTyped) {
    for (const char* mod : {"Alpha", "Bravo", "Charlie"})
        MakeFolder(QLatin1String("program/mods/") + mod);
    Open();
    Author().setText("typed");
    Mods().setCurrentRow(1);
    EXPECT_EQ(Combo().currentText(), "Bravo");
    EXPECT_EQ(Author().text(), kNoFile) << "another mod was selected";

    Author().setText("typed");
    MakeFolder("program/mods/Aardvark");
    Tick();
    EXPECT_EQ(Combo().count(), 4);
    EXPECT_EQ(Combo().currentText(), "Bravo");
    EXPECT_EQ(Author().text(), "typed");

    QDir().rename(Path("program/mods/Bravo"), Path("program/mods/Delta"));
    Tick();
    EXPECT_EQ(SelectedText(), "Aardvark");
    EXPECT_EQ(Combo().currentText(), "") << "nobody chose the mod that the list selects now";
    EXPECT_EQ(Author().text(), "typed");
    Combo().setCurrentIndex(Combo().findText("Delta"));
    EXPECT_EQ(SelectedText(), "Delta");
    EXPECT_EQ(Author().text(), "typed");
}

TEST_F(Editor, RefusesAndKeepsBothTexts) {
    const QByteArray longValue = "Other: " + QByteArray(10'001, 'x') + "\r\n";
    Write("program/mods/Alpha/ModInfo.txt", longValue);
    MakeFolder("program/mods/Bravo");
    Open();
    AnswerBoxes boxes;
    const auto removeMod = [&](QMessageBox&) { QDir(Path("program/mods/Bravo")).removeRecursively(); };
    boxes.Then(QMessageBox::Yes).Then(QMessageBox::Ok); // a value is too long
    boxes.Then(QMessageBox::Yes).Then(QMessageBox::Ok); // a character is none of the code page
    boxes.Then(QMessageBox::Yes, removeMod).Then(QMessageBox::Ok);
    const QString texts[]{"Tom", QString::fromUtf8("\xD0\x96"), "Tom"};
    for (std::size_t at = 0; at < 3; ++at) {
        Combo().setCurrentIndex(at == 0 ? 0 : 1);
        Author().setText(texts[at]);
        Make();
        ASSERT_EQ(boxes.Seen().size(), 2 * at + 2);
        EXPECT_EQ(boxes.Seen().back().title, "Error!");
        EXPECT_EQ(Author().text(), texts[at]);
        EXPECT_FALSE(Exists("program/mods/Bravo/ModInfo.txt"));
    }
    EXPECT_TRUE(boxes.Seen()[3].text.contains(texts[1]));
    EXPECT_EQ(Read("program/mods/Alpha/ModInfo.txt"), longValue);
    EXPECT_FALSE(Exists("program/mods/Bravo"));
}

} // namespace
} // namespace quillbay::test
