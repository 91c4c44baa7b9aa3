#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QtTest>

namespace quillbay {
namespace {

class CompatibilityWindow : public test::SelectorFixture {
protected:
    CompatibilityWindow() {
        for (const char* file :
             {"Alpha/odf/ships/a.odf", "Alpha/Tempest2.exe", "Alpha/Addon/Extra/odf/ships/a.odf",
              "Alpha/Addon/Extra/ModInfo.txt", "Beta/Addon/Extra/ModInfo.txt", "Beta/odf/x"})
            Write(QStringLiteral("program/mods/") + file, "1");
    }
    void Open() {
        ASSERT_TRUE(Start());
        opened_ = &OpenWindow("menuModCompatablility", "frmCompatability");
    }
    QListWidget& Box(const char* name) const { return Control<QListWidget>(*opened_, name); }
    /// The result for the rows of these mod paths; "game" is the game's row, an empty path selects none.
    QString Check(const QString& first, const QString& second) const {
        const auto select = [&](QListWidget& box, const QString& path) {
            box.clearSelection();
            for (int row = 0; row < box.count() && !path.isEmpty(); ++row)
                if (box.item(row)->data(Qt::UserRole).toString() == (path == "game" ? "" : path))
                    box.setCurrentRow(row);
        };
        select(Box("lstBox1"), first);
        select(Box("lstBox2"), second);
        QTest::keyClick(&Box("lstBox2"), Qt::Key_Return);
        auto& result = Control<QPlainTextEdit>(*opened_, "lstIncompatable");
        EXPECT_TRUE(test::WaitFor([&] { return result.isReadOnly(); }));
        return result.toPlainText();
    }

    QWidget* opened_ = nullptr;
};

TEST_F(CompatibilityWindow, ListsCommonFiles) {
    Open();
    QStringList expected{"(Tempest II Directory)"}, rows;
    for (const DirEntry& mod : *files.List(Path("program/mods").toStdString(), Detail::Names))
        expected << QString::fromStdString(mod.name) << "    Extra";
    for (int row = 0; row < Box("lstBox2").count(); ++row)
        rows << Box("lstBox2").item(row)->text();
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(Box("lstBox1").selectedItems().value(0)->text(), SelectedText());

    EXPECT_EQ(Check("Alpha", "game"), "Tempest2.exe");
    EXPECT_EQ(Check("Alpha\\Addon\\Extra", "Alpha"), "odf\\ships\\a.odf");
    EXPECT_EQ(Control<QLabel>(*opened_, "lblMod1").text(), "Mods: Extra and");
    EXPECT_EQ(Control<QLabel>(*opened_, "lblMod2").text(), "           Alpha");
    EXPECT_EQ(opened_->focusWidget()->objectName(), "lstIncompatable");
    // Equally named addons of two mods are different mods.
    EXPECT_EQ(Check("Alpha\\Addon\\Extra", "Beta\\Addon\\Extra"), "(Mods are compatable)");
}

TEST_F(CompatibilityWindow, RefusesAndFailsWithTheRightWords) {
    Open();
    ASSERT_TRUE(QFile::rename(Path("program/mods/Alpha/Addon"), Path("program/Addon")));
    struct Case {
        const char *first, *second, *text, *title;
    };
    for (const Case& c : {Case{"", "", "Please select two mods.", "Select two mods"},
                          Case{"", "Alpha", "Please select a mod in the first box.", "Select a mod"},
                          Case{"Alpha", "", "Please select a mod in the second box.", "Select a mod"},
                          Case{"Alpha", "Alpha", "Please select two different mods.", "Same mod"},
                          Case{"game", "Alpha\\Addon\\Extra", "Error: ", "Error!"}}) {
        Box("lstBox1").setFocus();
        test::AnswerBoxes boxes;
        EXPECT_EQ(Check(c.first, c.second), "");
        ASSERT_EQ(boxes.Seen().size(), 1U);
        EXPECT_TRUE(boxes.Seen()[0].text.startsWith(QLatin1String(c.text)));
        EXPECT_EQ(boxes.Seen()[0].title, c.title);
        EXPECT_EQ(opened_->focusWidget(), &Box("lstBox1"));
    }
    EXPECT_TRUE(Control<QWidget>(*opened_, "cmdCheck").isEnabled());
}

TEST_F(CompatibilityWindow, ShowsProgressForMoreThan150Files) {
    for (int i = 2; i < 150; ++i)
        Write(QStringLiteral("program/mods/Alpha/odf/%1").arg(i), "1");
    Open();
    auto& bar = Control<QProgressBar>(*opened_, "pgbProgress");
    QListWidget& box = Box("lstBox1");
    const int height = box.height();
    std::vector<int> heights;
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&] { heights.push_back(box.height()); });
    EXPECT_EQ(Check("Alpha", "Beta"), "(Mods are compatable)");
    EXPECT_TRUE(heights.empty());
    Write("program/mods/Alpha/odf/x", "1");
    EXPECT_EQ(Check("Alpha", "Beta"), "odf\\x");
    ASSERT_FALSE(heights.empty());
    EXPECT_EQ(heights.back(), height - bar.height());
    EXPECT_TRUE(box.isEnabled() && !bar.isVisible() && box.height() == height);
}

} // namespace
} // namespace quillbay
