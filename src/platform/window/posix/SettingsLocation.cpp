#include "platform/window/SettingsLocation.h"

#include <QDir>

namespace quillbay {

std::unique_ptr<QSettings> OpenUserSettings() {
    QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + QStringLiteral("/.config");
    return std::make_unique<QSettings>(folder + QStringLiteral("/T2 Quillbay.ini"), QSettings::IniFormat);
}

} // namespace quillbay
