#include "common/window/AppSettings.h"
#include "common/window/QtText.h"
#include "common/window/RawTextBox.h"
#include "odf/OdfRepair.h"

#include <QDir>
#include <QFile>
#include <QtTest>
#include <QtWidgets>

#include <random>

namespace quillbay::test {
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

QString FilePath() { return qEnvironmentVariable("XDG_CONFIG_HOME") + "/T2 Quillbay.ini"; }

TEST(UserSettings, RubbishCountsAsAbsent) {
    const auto read = [] { return UserSettings().GetAppSetting("Fade", "Speed", "fallback"); };
    const std::pair<QByteArray, QString> files[] = {
        {"[Fade]\nIntensity=50\nSpeed=@Variant(\\0\\0\\0\\x2\\0)\n\x01\xFF[[rubbish\n", "fallback"},
        {"[Fade]\nSpeed=True,1\n", "True,1"},
        {"[Fade]\nSpeed=\n", ""},
        {QByteArray(100'000, '\0'), "fallback"},
    };
    for (const auto& [bytes, text] : files) {
        QFile file(FilePath());
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_EQ(read(), text) << bytes.left(60).data();
        UserSettings().SaveAppSetting("Fade", "Speed", "60");
        EXPECT_EQ(read(), "60");
    }
    QFile::remove(FilePath());
    QDir().mkpath(FilePath());
    UserSettings().SaveAppSetting("Fade", "Speed", "60");
    EXPECT_EQ(read(), "fallback");
    QDir().rmdir(FilePath());
}

} // namespace
} // namespace quillbay::test
