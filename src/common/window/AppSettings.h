#pragma once

#include <QString>

namespace quillbay {

/// The per-user store of the preferences under the application name "T2 Quillbay": sections and keys with
/// string values. On Windows HKEY_CURRENT_USER\Software\T2 Quillbay\<section>, on POSIX the INI file
/// `$XDG_CONFIG_HOME/T2 Quillbay.ini` (else in `~/.config`).
class AppSettings {
public:
    virtual ~AppSettings() = default;

    /// The stored text, or `fallback` when the value does not exist or the store cannot be read.
    virtual QString GetAppSetting(const QString& section, const QString& key,
                                  const QString& fallback) const = 0;
    /// Creates or overwrites the value and flushes it; a failed write is passed over.
    virtual void SaveAppSetting(const QString& section, const QString& key, const QString& value) = 0;
};

/// The store of this user.
class UserSettings : public AppSettings {
public:
    QString GetAppSetting(const QString& section, const QString& key, const QString& fallback) const override;
    void SaveAppSetting(const QString& section, const QString& key, const QString& value) override;
};

/// One of the texts that are kept, with what counts while there is none.
struct Preference {
    const char* section;
    const char* key;
    const char* fallback;
};

// All there are.
inline constexpr Preference kXAxisPreference{"Smooth Closing", "XAxis", "True"};
inline constexpr Preference kYAxisPreference{"Smooth Closing", "YAxis", "True"};
inline constexpr Preference kSimultaneousPreference{"Smooth Closing", "Simultaneous", "False"};
inline constexpr Preference kMainWindowOnlyPreference{"Smooth Closing", "Main Window Only", "True"};
inline constexpr Preference kFadeIntensityPreference{"Fade", "Intensity", "237"};
inline constexpr Preference kFadeSpeedPreference{"Fade", "Speed", "1"};

/// On when the text is exactly "True".
bool ReadSwitch(const AppSettings& settings, const Preference& preference);
void SaveSwitch(AppSettings& settings, const Preference& preference, bool on);
/// The number that the text begins with, rounded to a whole one; 0 when it begins with none.
double ReadNumber(const AppSettings& settings, const Preference& preference);
void SaveNumber(AppSettings& settings, const Preference& preference, int number);

} // namespace quillbay
