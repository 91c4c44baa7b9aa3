#include "common/window/RawTextBox.h"

#include "odf/OdfRepair.h"

#include <QtTest>
#include <QtWidgets>

#include <random>

namespace quillbay {
namespace {

TEST(RawTextBox, GivesBackEveryByteButLineEnds) {
    RawTextBox box;
    const std::string_view pieces[] = {"\r", "\n", "\r\n", " \n ", "\xA0", "\t", "x"};
    std::mt19937 random(20'260'108);
    for (int round = 0; round < 300; ++round) {
        std::string bytes = "x";
        for (auto count = random() % 20; count > 0; --count) {
            bytes += pieces[random() % std::size(pieces)];
            bytes += static_cast<char>(random());
        }
        const std::string expected = WithLineEnds(bytes);
        box.SetText(DecodeSystemText(bytes));
        EXPECT_EQ(box.FileBytes().bytes, expected);
        box.selectAll();
        box.cut();
        box.paste();
        EXPECT_EQ(box.FileBytes().bytes, expected) << "on its way through the clipboard";
    }
    box.SetText("a\u2603");
    EXPECT_EQ(box.FileBytes().unencodable, "\u2603");
}

TEST(RawTextBox, TakesWhatIsTypedOrComesFromElsewhereForALineEnd) {
    RawTextBox box;
    box.SetText("of the file:\n");
    box.moveCursor(QTextCursor::End);
    for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ShiftModifier})
        QTest::keyClick(&box, Qt::Key_Return, modifier);
    for (const char* text : {"\u2028", "\u2029", "\n", "\r\n"}) {
        QApplication::clipboard()->setText(text);
        box.paste();
    }
    EXPECT_EQ(box.FileBytes().bytes, "of the file:\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n");
}

} // namespace
} // namespace quillbay
