#include "common/window/QtText.h"

#include "common/window/ShowMessage.h"
#include "support/AnswerBoxesWindow.h"

#include <QLabel>

#include <gtest/gtest.h>
#include <random>

namespace quillbay {
namespace {

TEST(QtText, EveryByteSequenceSurvives) {
    EXPECT_EQ(ToQString("K\xC3\xA4se \xF0\x9F\x9A\x80"), QStringLiteral(u"K\u00e4se \U0001F680"));
    std::mt19937 random(7);
    const std::string pieces[] = {"a",    "\xC3\xA4", "\xEF\xBB\xBF", "\xF0\x9F\x9A\x80",  "\xED\xA0\x80",
                                  "\xC0", "\xF5",     "\xE2\x82",     std::string(1, '\0')};
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (unsigned length = random() % 8; length > 0; --length)
            text += random() % 2 ? pieces[random() % std::size(pieces)]
                                 : std::string(1, static_cast<char>(random() % 256));
        ASSERT_EQ(FromQString(ToQString(text)), text) << "round " << round;
    }
}

TEST(ShowMessage, ShowsPlainTextAndTakesEscapeForNo) {
    test::AnswerBoxes boxes;
    boxes.Then(QMessageBox::Yes, [](QMessageBox& box) {
        for (const QLabel* label : box.findChildren<QLabel*>())
            EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
    });
    for (const auto answer : {QMessageBox::Yes, QMessageBox::No})
        EXPECT_EQ(ShowMessage(nullptr, "<b>%1</b> & co", "Install <i>x</i> mod?", QMessageBox::Question,
                              QMessageBox::Yes | QMessageBox::No, "<u>more</u>"),
                  answer);
    ASSERT_EQ(boxes.Seen().size(), 2u);
    EXPECT_EQ(boxes.Seen()[0].text, "<b>%1</b> & co");
}

} // namespace
} // namespace quillbay
