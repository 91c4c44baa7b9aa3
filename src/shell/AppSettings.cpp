#include "shell/AppSettings.h"

#include "platform/window/SettingsLocation.h"

namespace quillbay {

namespace {

QString Address(const QString& section, const QString& key) { return section + QLatin1Char('/') + key; }

} // namespace

QString UserSettings::GetAppSetting(const QString& section, const QString& key,
                                    const QString& fallback) const {
    const auto store = OpenUserSettings();
    if (store->status() != QSettings::NoError) return fallback;
    const QVariant value = store->value(Address(section, key));
    // A comma in a text that a user typed into the file makes a list of it; other types are rubbish.
    if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(QLatin1Char(','));
    return value.typeId() == QMetaType::QString ? value.toString() : fallback;
}

void UserSettings::SaveAppSetting(const QString& section, const QString& key, const QString& value) {
    const auto store = OpenUserSettings();
    store->setValue(Address(section, key), value);
    store->sync();
}

} // namespace quillbay
