#include "common/window/AppSettings.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

QString FilePath() { return qEnvironmentVariable("XDG_CONFIG_HOME") + "/T2 Quillbay.ini"; }

TEST(UserSettings, GiveBackWhatWasSaved) {
    for (const QString text : {"a, b;\"c\" %1", "1"}) {
        UserSettings().SaveAppSetting("Fade", "Speed", text);
        UserSettings().SaveAppSetting("Smooth Closing", "Speed", "of another section");
        EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Speed", "none"), text);
        EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Brightness", "none"), "none");
    }
}

TEST(UserSettings, LieInOneSectionEachOfTheFile) {
    QFile file(FilePath());
    file.remove();
    UserSettings settings;
    settings.SaveAppSetting("Fade", "Intensity", "300");
    settings.SaveAppSetting("Smooth Closing", "XAxis", "False");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "flushed at each write";
    EXPECT_EQ(file.readAll(), "[Fade]\nIntensity=300\n\n[Smooth%20Closing]\nXAxis=False\n");
}

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
} // namespace quillbay
