#include "shell/AppSettings.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

QString FilePath() { return qEnvironmentVariable("XDG_CONFIG_HOME") + "/T2 Quillbay.ini"; }

void WriteFile(const QByteArray& bytes) {
    QDir().mkpath(qEnvironmentVariable("XDG_CONFIG_HOME"));
    QFile file(FilePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(UserSettings, GiveBackWhatWasSaved) {
    const QString text = "a, b;\"c\" %1";
    UserSettings().SaveAppSetting("Fade", "Speed", text);
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Speed", "1"), text);
    UserSettings().SaveAppSetting("Fade", "Speed", "1");
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Speed", text), "1");
}

TEST(UserSettings, LieInOneSectionEachOfTheFile) {
    QFile::remove(FilePath());
    UserSettings settings;
    EXPECT_EQ(settings.GetAppSetting("Fade", "Intensity", "237"), "237");
    settings.SaveAppSetting("Fade", "Intensity", "300");
    settings.SaveAppSetting("Smooth Closing", "Main Window Only", "False");
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "237"), "300");
    EXPECT_EQ(UserSettings().GetAppSetting("Smooth Closing", "Main Window Only", "True"), "False");
    EXPECT_EQ(UserSettings().GetAppSetting("Smooth Closing", "XAxis", "True"), "True");

    QFile file(FilePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "flushed at each write";
    EXPECT_TRUE(file.readAll().contains("[Fade]\nIntensity=300\n"));
}

TEST(UserSettings, RubbishCountsAsAbsent) {
    WriteFile("[Fade]\nIntensity=50\nSpeed=@Variant(\\0\\0\\0\\x2\\0)\n\x01\xFF\0[[rubbish\n");
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Speed", "1"), "1");
    WriteFile("[Smooth Closing]\nXAxis=True,1\nYAxis=\n");
    EXPECT_EQ(UserSettings().GetAppSetting("Smooth Closing", "XAxis", "True"), "True,1");
    EXPECT_EQ(UserSettings().GetAppSetting("Smooth Closing", "YAxis", "True"), "");
    WriteFile(QByteArray(100'000, '\0'));
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "237"), "237");
    UserSettings().SaveAppSetting("Fade", "Intensity", "60");
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "237"), "60");

    QFile::remove(FilePath());
    QDir().mkpath(FilePath());
    EXPECT_EQ(UserSettings().GetAppSetting("Fade", "Intensity", "237"), "237");
    UserSettings().SaveAppSetting("Fade", "Intensity", "60");
    QDir().rmdir(FilePath());
}

} // namespace
} // namespace quillbay
