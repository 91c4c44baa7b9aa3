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

} // namespace quillbay
