#pragma once

#include <QSettings>

#include <memory>

namespace quillbay {

/// The user's settings store of this program: on Windows HKEY_CURRENT_USER\Software\T2 Quillbay, elsewhere
/// the INI file `$XDG_CONFIG_HOME/T2 Quillbay.ini`, or in `~/.config` when the variable is empty, unset or no
/// absolute path.
std::unique_ptr<QSettings> OpenUserSettings();

} // namespace quillbay
