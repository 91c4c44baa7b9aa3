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
    // A text with a comma is read as a list, a broken file as other types: none of them was written here.
    return value.typeId() == QMetaType::QString ? value.toString() : fallback;
}

void UserSettings::SaveAppSetting(const QString& section, const QString& key, const QString& value) {
    const auto store = OpenUserSettings();
    store->setValue(Address(section, key), value);
    store->sync();
}

} // namespace quillbay
