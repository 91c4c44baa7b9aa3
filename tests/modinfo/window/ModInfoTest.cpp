#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QtTest>
#include <QtWidgets>

namespace quillbay::test {
namespace {

constexpr char kNoFile[] = "(File 'ModInfo.txt' not found)";

class ModInfoWindows : public SelectorFixture {
protected:
    QLabel& Label(const char* name) const { return Control<QLabel>(name); }
    QString Text(const char* name) const { return Label(name).text(); }

    /// On the folders of these mods.
    void OpenEditor(const QStringList& mods) {
        for (const QString& mod : mods)
            MakeFolder("program/mods/" + mod);
        ASSERT_TRUE(Start());
        editor = &OpenWindow("menuModEdit", "frmEditModInfo");
    }
    QComboBox& Combo() const { return Control<QComboBox>(*editor, "cboMod"); }
    void Choose(const char* mod) const { Combo().setCurrentIndex(Combo().findData(mod)); }
    QLineEdit& Author() const { return Control<QLineEdit>(*editor, "txtAuthor"); }
    /// The mod that is chosen and the author.
    QString Shown() const { return Combo().currentText() + ": " + Author().text(); }
    QString Preview(const char* name) const { return Control<QLabel>(*editor, name).text(); }
    void Make() const { Control<QPushButton>(*editor, "cmdMakeFile").click(); }

    QWidget* editor = nullptr;
};

TEST_F(ModInfoWindows, TheListKeepsItsPlaceInBothLayouts) {
    struct Case {
        const char* name;   ///< of the picture file
        const char* format; ///< empty for bytes that are no picture
        QSize size;
        QSize shown; ///< 0 x 0 for a picture that is not valid
    };
    const std::vector<Case> cases{{"other.bmp", "bmp", {100, 50}, {}},
                                  {"ModPic.bmp", "bmp", {600, 200}, {457, 89}},
                                  {"ModPic.jpg", "jpg", {100, 50}, {100, 50}},
                                  {"ModPic.bmp", "", {}, {0, 0}},
                                  {"ModPic.bmp", "png", {10, 10}, {0, 0}}};
    for (std::size_t row = 0; row < cases.size(); ++row) {
        const QString file = QStringLiteral("program/mods/%1/").arg(row) + cases[row].name;
        Write(file, "BM no picture");
        QImage(cases[row].size, QImage::Format_RGB32).save(Path(file), cases[row].format);
    }
    ASSERT_TRUE(Start());
    window->move(100, 200);
    QCoreApplication::processEvents();
    const int base = window->height();
    const QPoint list = Mods().mapToGlobal(QPoint());
    const QLabel& area = Label("picModsPic");
    for (const int row : {0, 1, 2, 3, 4, 0}) {
        const QSize shown = cases[static_cast<std::size_t>(row)].shown;
        const bool isInvalid = shown.isNull();
        Mods().setCurrentRow(row);
        EXPECT_EQ(area.isVisible(), row > 0) << row;
        EXPECT_EQ(Label("lblInvalidPic").isVisible(), isInvalid) << row;
        EXPECT_EQ(area.pixmap().size(), shown.expandedTo({0, 0})) << row;
        EXPECT_EQ(area.size(), QSize(457, isInvalid ? 1 : 89)) << row;
        EXPECT_EQ(window->height(), row > 0 ? base + 89 : base) << row;
        EXPECT_EQ(Mods().mapToGlobal(QPoint()), list) << row;
    }
    window->move(100, 20);
    Mods().setCurrentRow(1);
    EXPECT_EQ(window->y(), 0);
}

TEST_F(ModInfoWindows, TextsArePlainWhateverTheyHoldAndMoveNothing) {
    const QByteArray longText(20'000, '\xE4');
    Write("program/mods/Alpha/ModInfo.txt",
          "Author: <b>Tom</b> && J&erry\r\nVersion: %1\nsecond line\nthird\r\n"
          "Other Heading: <i>Credits</i>\r\nDescription: " +
              longText + "\r\nOther: " + longText + "\r\n");
    Write("program/mods/Alpha/Docs/big", QByteArray(2'000'000, 'x')); // in no folder of the game
    Write("program/mods/Alpha/Backup/odf/a.odf", QByteArray(1'000'000, 'x'));
    Write("program/mods/Alpha/odf/a.odf", "x");
    MakeFolder("program/mods/Bravo");
    QLocale::setDefault(QLocale(QLocale::German));
    ASSERT_TRUE(Start());
    Control<QTimer>("timClickMod").start(0);
    EXPECT_TRUE(WaitFor([&] { return Text("lblModsMaker") == "<b>Tom</b> && J&erry"; })) << "by themselves";
    EXPECT_FALSE(Control<QTimer>("timClickMod").isActive());
    EXPECT_EQ(window->focusWidget(), &Mods());

    Mods().setCurrentRow(1);
    EXPECT_EQ(Text("lblModsMaker"), kNoFile);
    std::map<QWidget*, QRect> places{{window.get(), window->geometry()}};
    for (auto* control : window->centralWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        places[control] = control->geometry();
    Mods().setCurrentRow(0);
    QCoreApplication::processEvents();
    QLocale::setDefault(QLocale::c());
    for (const auto& [control, place] : places)
        EXPECT_EQ(control->geometry(), place) << qPrintable(control->objectName());

    const QString cut(10'000, QChar(0xE4));
    for (const auto& [name, text] :
         std::map<const char*, QString>{{"lblModsMaker", "<b>Tom</b> && J&erry"},
                                        {"lblModsVersion", "%1\nsecond line\nthird"},
                                        {"lblModsOtherHeading", "<i>Credits</i>"},
                                        {"lblModsDescription", cut},
                                        {"lblModsOther", cut}}) {
        EXPECT_EQ(Text(name), text) << name;
        EXPECT_EQ(Label(name).textFormat(), Qt::PlainText) << name;
        EXPECT_NE(Label(name).buddy(), nullptr) << name << " would show its access mark";
    }
    EXPECT_EQ(Text("lblModSize"), "Size of current mod: 2,97 MB");
    EXPECT_EQ(Text("lblModNumOfFiles"), "Number of files in current mod: 2");
    EXPECT_FALSE(Label("lblModsVersion").toolTip().contains("<b>Tom"));
}

TEST_F(ModInfoWindows, TheEditorPreviewsWhatIsTypedOrThePanelAndFollowsTheListWithoutLosingIt) {
    OpenEditor({"Alpha", "Bravo", "Charlie"});
    EXPECT_EQ(Shown(), ": ") << "nothing chosen";
    AnswerBoxes boxes;
    Make();
    EXPECT_EQ(boxes.Seen().at(0).text, "Please select a mod.");
    EXPECT_EQ(Preview("lblModsOtherHeading"), "Other: ");
    for (const char* text : {"<b>A && B", "", "   "}) {
        Author().setText(text);
        EXPECT_EQ(Preview("lblModsMaker"), *text == '<' ? text : kNoFile) << text;
        EXPECT_EQ(Preview("lblModsDescription"), kNoFile) << text;
    }
    for (const QLabel* label : editor->findChildren<QLabel*>(QRegularExpression("^lblMods")))
        EXPECT_TRUE(label->buddy() && label->textFormat() == Qt::PlainText) << "shows access marks or markup";
    Control<QPushButton>(*editor, "cmdClear").click();
    EXPECT_EQ(Author().text(), "");

    Mods().setCurrentRow(1);
    EXPECT_EQ(Shown(), QLatin1String("Bravo: ") + kNoFile);
    Author().setText("typed");
    MakeFolder("program/mods/Aardvark");
    Tick();
    EXPECT_EQ(Shown(), "Bravo: typed");
    QDir().rename(Path("program/mods/Bravo"), Path("program/mods/Delta"));
    Tick();
    EXPECT_EQ(Shown(), ": typed") << "for no mod that nobody chose";
    Choose("Delta");
    EXPECT_EQ(SelectedText() + ", " + Shown(), "Delta, Delta: typed");
    Mods().setCurrentRow(0);
    QDir(Path("program/mods")).removeRecursively();
    Tick();
    EXPECT_EQ(Author().text(), kNoFile) << "no mod, no new texts";
}

TEST_F(ModInfoWindows, TheEditorWritesTheFileOfTheAddonThatIsChosenByItsPlaceOrKeepsTheText) {
    OpenEditor({"Alpha/Addon/Maps", "Bravo/Addon/Maps"});
    Author().setText("Tom");
    // A break from elsewhere is a line end in every box.
    QApplication::clipboard()->setText("two\u2028three");
    auto& description = Control<QPlainTextEdit>(*editor, "txtDescription");
    description.setPlainText("one\u00A0\u20AC");
    description.moveCursor(QTextCursor::End);
    QTest::keyClick(&description, Qt::Key_Return, Qt::ShiftModifier);
    description.paste();
    QTest::keyClick(&Control<QWidget>(*editor, "txtVersion"), Qt::Key_V, Qt::ControlModifier);
    Choose("Bravo\\Addon\\Maps");
    EXPECT_EQ(Mods().row(Mods().selectedItems().value(0)), 3);

    const QString file = "program/mods/Bravo/Addon/Maps/ModInfo.txt";
    const QByteArray bytes = "Author: Tom\r\n\r\nDescription: one\xA0\x80\r\ntwo\r\nthree\r\n\r\n"
                             "Version: two\r\nthree\r\n\r\nOther Heading: \r\n\r\nOther: \r\n";
    AnswerBoxes boxes;
    boxes.Then(QMessageBox::No).Then(QMessageBox::Yes).Then(QMessageBox::Yes).Then(QMessageBox::Ok);
    boxes.Then(QMessageBox::Yes, [&](QMessageBox&) { QDir(Path("program/mods/Bravo")).removeRecursively(); });
    Make();
    EXPECT_FALSE(Exists(file));
    Make();
    EXPECT_EQ(boxes.Seen().back().text, "Are you sure you want to make the file?");
    EXPECT_EQ(Read(file), bytes);
    EXPECT_EQ(Preview("lblModsDescription"), "one\u00A0\u20AC") << "as it is read";
    const QString foreign = QString::fromUtf8("\xD0\x96");
    for (const auto& [text, kept] : {std::pair(foreign, bytes), {"the mod goes", "(none)"}}) {
        Author().setText(text);
        Make();
        EXPECT_EQ(boxes.Seen().back().title, "Error!");
        EXPECT_EQ(boxes.Seen().back().text.contains(foreign), text == foreign);
        EXPECT_EQ(Author().text(), text);
        EXPECT_EQ(Read(file), kept) << qPrintable(text);
    }
}

TEST_F(ModInfoWindows, TheEditorKeepsEveryByteAndRefusesWhatIsTooLongToBeShown) {
    const QString file = "program/mods/Alpha/ModInfo.txt";
    QByteArray all;
    for (int code = 0; code < 256; ++code)
        if (code != '\r') all += static_cast<char>(code);
    const QByteArray kept = "Author: " + all + "\r\n\r\nDescription: " + all + "\r\n\r\n";
    const QByteArray old = kept + "Other: " + QByteArray(10'001, '\xE4') + "\r\n";
    Write(file, old);
    OpenEditor({"Bravo"});
    Mods().setCurrentRow(1);
    Mods().setCurrentRow(0);
    auto& version = Control<QLineEdit>(*editor, "txtVersion");
    version.setText("typed");
    AnswerBoxes boxes;
    for (const char* field : {"lost: Other", "whole: Version", ""}) {
        if (*field == 'w') {
            Write(file, kept);
            version.setText(QString(10'001, 'x'));
        } else if (!*field) {
            version.setText("typed");
        }
        const QString typed = version.text();
        boxes.Then(QMessageBox::Yes);
        if (*field) boxes.Then(QMessageBox::Ok);
        Make();
        EXPECT_EQ(version.text(), typed);
        if (*field) {
            EXPECT_EQ(Read(file), *field == 'l' ? old : kept);
            EXPECT_TRUE(boxes.Seen().back().text.endsWith(field)) << field;
        }
    }
    EXPECT_TRUE(Read(file).startsWith(kept + "Version: typed\r\n"));
}

} // namespace
} // namespace quillbay::test
