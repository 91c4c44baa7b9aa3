#include "support/SelectorFixtureWindow.h"

namespace quillbay::test {
namespace {

constexpr char kNoFile[] = "(File 'ModInfo.txt' not found)";

class ModInfoWindows : public SelectorFixture {
protected:
    QLabel& Label(const char* name) const { return Control<QLabel>(name); }

    /// On the folders of these mods.
    void OpenEditor(const QStringList& mods) {
        for (const QString& mod : mods)
            MakeFolder("program/mods/" + mod);
        ASSERT_TRUE(Start());
        Open("menuModEdit", "frmEditModInfo");
    }
    QComboBox& Combo() const { return In<QComboBox>("cboMod"); }
    void Choose(const char* mod) const { Combo().setCurrentIndex(Combo().findData(mod)); }
    QLineEdit& Author() const { return In<QLineEdit>("txtAuthor"); }
    /// The mod that is chosen and the author.
    QString Shown() const { return Combo().currentText() + ": " + Author().text(); }
    void Make() const { Press("cmdMakeFile"); }
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

TEST_F(ModInfoWindows, TheEditorPreviewsWhatIsTypedOrThePanelAndFollowsTheListWithoutLosingIt) {
    OpenEditor({"Alpha", "Bravo", "Charlie"});
    EXPECT_EQ(Shown(), ": ") << "nothing chosen";
    AnswerBoxes boxes;
    Make();
    EXPECT_EQ(boxes.Seen().at(0).text, "Please select a mod.");
    EXPECT_EQ(Caption("lblModsOtherHeading"), "Other: ");
    for (const char* text : {"<b>A && B", "", "   "}) {
        Author().setText(text);
        EXPECT_EQ(Caption("lblModsMaker"), *text == '<' ? text : kNoFile) << text;
        EXPECT_EQ(Caption("lblModsDescription"), kNoFile) << text;
    }
    for (const QLabel* label : opened->findChildren<QLabel*>(QRegularExpression("^lblMods")))
        EXPECT_TRUE(label->buddy() && label->textFormat() == Qt::PlainText) << "shows access marks or markup";
    In<QPushButton>("cmdClear").click();
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
    QTest::keyClick(&Author(), Qt::Key_Escape);
    EXPECT_TRUE(WaitUntilClosed());
    Item("menuModEdit").trigger();
    EXPECT_EQ(Shown(), ": typed") << "and kept when the window closes";
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
    auto& description = In<QPlainTextEdit>("txtDescription");
    description.setPlainText("one\u00A0\u20AC");
    description.moveCursor(QTextCursor::End);
    QTest::keyClick(&description, Qt::Key_Return, Qt::ShiftModifier);
    description.paste();
    QTest::keyClick(&In<QWidget>("txtVersion"), Qt::Key_V, Qt::ControlModifier);
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
    EXPECT_EQ(boxes.Seen().back().informative, "It will be " + QDir::toNativeSeparators(Path(file)));
    EXPECT_EQ(Read(file), bytes);
    EXPECT_EQ(Caption("lblModsDescription"), "one\u00A0\u20AC") << "as it is read";
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
    auto& version = In<QLineEdit>("txtVersion");
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

using ModFiles = SelectorFixture;

TEST_F(ModFiles, TheCompatibilityCheckerListsCommonFilesOrSaysWhyNot) {
    MakeMods({"Alpha/odf/a", "Alpha/Tempest2.exe", "Alpha/Addon/Extra/odf/a", "Alpha/Addon/Extra/ModInfo.txt",
              "Beta/Addon/Extra/odf/a", "Beta/ModInfo.txt", "Beta/odf/x"});
    for (int i = 2; i < 150; ++i)
        Write(QStringLiteral("program/mods/Alpha/odf/%1").arg(i), {});
    ASSERT_TRUE(Start());
    Open("menuModCompatablility", "frmCompatability");
    auto& box = In<QListWidget>("lstBox1");
    auto& second = In<QListWidget>("lstBox2");
    const auto& result = In<QPlainTextEdit>("lstIncompatable");
    EXPECT_EQ(box.selectedItems().value(0)->text(), SelectedText());
    const auto select = [](QListWidget& list, const QString& path) {
        const auto found =
            list.model()->match(list.model()->index(0, 0), Qt::UserRole, path, 1, Qt::MatchExactly);
        list.setCurrentRow(path == "game" ? 0 : found.value(0).row());
    };
    /// The list for these mods, or the box that came instead; an empty path selects none.
    const auto check = [&](const QString& firstPath, const QString& secondPath) {
        AnswerBoxes boxes;
        select(box, firstPath);
        select(second, secondPath);
        box.setFocus();
        QTest::keyClick(&second, Qt::Key_Return);
        EXPECT_TRUE(WaitFor([&] { return result.isReadOnly(); }));
        if (boxes.Seen().empty()) return result.toPlainText();
        EXPECT_EQ(opened->focusWidget(), &box) << qPrintable(boxes.Seen()[0].text);
        EXPECT_EQ(result.toPlainText(), "") << qPrintable(boxes.Seen()[0].text);
        return boxes.Seen()[0].title + ": " + boxes.Seen()[0].text;
    };

    int shortened = 0; ///< the height of the list beside the progress bar
    auto& bar = In<QProgressBar>("pgbProgress");
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&] { shortened = box.height(); });
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&second, &held); // answers no message that it has raised
    EXPECT_EQ(check("", ""), "Select two mods: Please select two mods.");
    EXPECT_EQ(check("", "Alpha"), "Select a mod: Please select a mod in the first box.");
    EXPECT_EQ(check("Alpha", ""), "Select a mod: Please select a mod in the second box.");
    const QString extra = "Alpha\\Addon\\Extra";
    EXPECT_EQ(check(extra, "Beta\\Addon\\Extra"), "Same mod: Please select two different mods.");
    EXPECT_EQ(check(extra, "Alpha"), "odf\\a");
    EXPECT_EQ(check(extra, "Beta"), "(Mods are compatable)");
    const auto says = [this](const QString& text) {
        return WaitFor([&] { return Control<QLabel>("lblOutcome").text() == text; });
    };
    EXPECT_TRUE(says("Extra and Beta have no file in common."));
    EXPECT_EQ(check("Alpha", "game"), "Tempest2.exe");
    EXPECT_TRUE(says("Alpha and (Tempest II Directory): 1 in both, 0 of them equal."));
    EXPECT_EQ(shortened, 0) << "not for 150 files";
    Write("program/mods/Alpha/odf/x", Read("program/mods/Beta/odf/x"));
    EXPECT_EQ(check("Alpha", "Beta"), "odf\\x");
    EXPECT_TRUE(says("Alpha and Beta: 1 in both, 1 of them equal."));
    EXPECT_EQ(box.height(), shortened + bar.height());
    ASSERT_TRUE(QFile::rename(Path("program/mods/Beta"), Path("program/Beta")));
    EXPECT_TRUE(check("Alpha", "Beta").startsWith("Error!: Error: "));
    EXPECT_TRUE(box.isEnabled() && In<QWidget>("cmdCheck").isEnabled() && !bar.isVisible());
}

} // namespace
} // namespace quillbay::test
