#include "common/window/AppSettings.h"

#include "common/modMisc.h"
#include "common/window/QtText.h"
#include "platform/window/SettingsLocation.h"

#include <cmath>

namespace quillbay {

namespace {

QString Address(const QString& section, const QString& key) { return section + QLatin1Char('/') + key; }

QString ReadText(const AppSettings& settings, const Preference& preference) {
    return settings.GetAppSetting(QLatin1String(preference.section), QLatin1String(preference.key),
                                  QLatin1String(preference.fallback));
}

void SaveText(AppSettings& settings, const Preference& preference, const QString& text) {
    settings.SaveAppSetting(QLatin1String(preference.section), QLatin1String(preference.key), text);
}

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

bool ReadSwitch(const AppSettings& settings, const Preference& preference) {
    return ReadText(settings, preference) == QLatin1String("True");
}

void SaveSwitch(AppSettings& settings, const Preference& preference, bool on) {
    SaveText(settings, preference, on ? QStringLiteral("True") : QStringLiteral("False"));
}

double ReadNumber(const AppSettings& settings, const Preference& preference) {
    return std::round(ParseLeadingNumber(FromQString(ReadText(settings, preference))));
}

void SaveNumber(AppSettings& settings, const Preference& preference, int number) {
    SaveText(settings, preference, QString::number(number));
}

} // namespace quillbay
