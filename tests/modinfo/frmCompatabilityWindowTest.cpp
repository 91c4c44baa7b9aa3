#include "support/AnswerBoxesWindow.h"
#include "support/SelectorFixtureWindow.h"

#include <QPlainTextEdit>
#include <QProgressBar>
#include <QtTest>

namespace quillbay {
namespace {

using Case = std::array<const char*, 4>;

class CompatibilityWindow : public test::SelectorFixture {
protected:
    void Open() {
        for (const char* file :
             {"Alpha/odf/a", "Alpha/Tempest2.exe", "Alpha/Addon/Extra/odf/a", "Alpha/Addon/Extra/ModInfo.txt",
              "Beta/Addon/Extra/odf/a", "Beta/ModInfo.txt", "Beta/odf/x"})
            Write(QStringLiteral("program/mods/") + file, "1");
        ASSERT_TRUE(Start());
        opened_ = &OpenWindow("menuModCompatablility", "frmCompatability");
    }
    /// The result for the rows of these mod paths; "game" is the game's row, an empty path selects none.
    QString Check(const QString& first, const QString& second) const {
        for (const auto& [name, path] : {std::pair("lstBox1", first), std::pair("lstBox2", second)}) {
            auto& box = Control<QListWidget>(*opened_, name);
            box.clearSelection();
            for (int row = 0; row < box.count() && !path.isEmpty(); ++row)
                if (box.item(row)->data(Qt::UserRole).toString() == (path == "game" ? "" : path))
                    box.setCurrentRow(row);
        }
        QTest::keyClick(&Control<QListWidget>(*opened_, "lstBox2"), Qt::Key_Return);
        auto& result = Control<QPlainTextEdit>(*opened_, "lstIncompatable");
        EXPECT_TRUE(test::WaitFor([&] { return result.isReadOnly(); }));
        return result.toPlainText();
    }

    QWidget* opened_ = nullptr;
};

TEST_F(CompatibilityWindow, RefusesAndFailsWithTheRightWords) {
    Open();
    auto& box = Control<QListWidget>(*opened_, "lstBox1");
    EXPECT_EQ(box.selectedItems().value(0)->text(), SelectedText());
    ASSERT_TRUE(QFile::rename(Path("program/mods/Beta"), Path("program/Beta")));
    for (const auto& [first, second, text, title] :
         {Case{"", "", "Please select two mods.", "Select two mods"},
          Case{"", "Alpha", "Please select a mod in the first box.", "Select a mod"},
          Case{"Alpha", "", "Please select a mod in the second box.", "Select a mod"},
          Case{"Alpha\\Addon\\Extra", "Beta\\Addon\\Extra", "Please select two different mods.", "Same mod"},
          Case{"game", "Beta", "Error: ", "Error!"}}) {
        box.setFocus();
        test::AnswerBoxes boxes;
        EXPECT_EQ(Check(first, second), "");
        ASSERT_EQ(boxes.Seen().size(), 1U);
        EXPECT_TRUE(boxes.Seen()[0].text.startsWith(QLatin1String(text)));
        EXPECT_EQ(boxes.Seen()[0].title, title);
        EXPECT_EQ(opened_->focusWidget(), &box);
    }
    EXPECT_TRUE(Control<QWidget>(*opened_, "cmdCheck").isEnabled());
}

TEST_F(CompatibilityWindow, ListsCommonFilesAndShowsProgressForMoreThan150) {
    for (int i = 2; i < 150; ++i)
        Write(QStringLiteral("program/mods/Alpha/odf/%1").arg(i), "1");
    Open();
    auto& bar = Control<QProgressBar>(*opened_, "pgbProgress");
    auto& box = Control<QListWidget>(*opened_, "lstBox1");
    int shortened = 0; ///< the height of the list beside the bar
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&] { shortened = box.height(); });
    EXPECT_EQ(Check("Alpha", "game"), "Tempest2.exe");
    EXPECT_EQ(Check("Alpha\\Addon\\Extra", "Alpha"), "odf\\a");
    EXPECT_EQ(Check("Alpha\\Addon\\Extra", "Beta"), "(Mods are compatable)");
    EXPECT_EQ(shortened, 0);
    Write("program/mods/Alpha/odf/x", "1");
    EXPECT_EQ(Check("Alpha", "Beta"), "odf\\x");
    EXPECT_TRUE(box.isEnabled() && !bar.isVisible());
    EXPECT_EQ(box.height(), shortened + bar.height());
}

} // namespace
} // namespace quillbay
