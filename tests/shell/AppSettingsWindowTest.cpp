#include "shell/AppSettings.h"

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
    const QByteArray broken = "[Fade]\nIntensity=50\nSpeed=@Variant(\\0\\0\\0\\x2\\0)\n\x01\xFF\0[[rubbish\n";
    const struct {
        QByteArray bytes;
        const char *section, *key, *read;
    } files[] = {
        {broken, "Fade", "Speed", "fallback"},
        {"[Smooth Closing]\nXAxis=True,1\nYAxis=\n", "Smooth Closing", "XAxis", "True,1"},
        {"[Smooth Closing]\nXAxis=True,1\nYAxis=\n", "Smooth Closing", "YAxis", ""},
        {QByteArray(100'000, '\0'), "Fade", "Intensity", "fallback"},
    };
    for (const auto& [bytes, section, key, read] : files) {
        QFile file(FilePath());
        QDir().mkpath(qEnvironmentVariable("XDG_CONFIG_HOME"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_EQ(UserSettings().GetAppSetting(section, key, "fallback"), read) << bytes.left(60).data();
        UserSettings().SaveAppSetting("Fade", "Intensity", "60");
        EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "fallback"), "60");
    }
    QFile::remove(FilePath());
    QDir().mkpath(FilePath());
    UserSettings().SaveAppSetting("Fade", "Intensity", "60");
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "237"), "237");
    QDir().rmdir(FilePath());
}

} // namespace
} // namespace quillbay
