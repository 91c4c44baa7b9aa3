#include "platform/window/SettingsLocation.h"

namespace quillbay {

std::unique_ptr<QSettings> OpenUserSettings() {
    return std::make_unique<QSettings>(QStringLiteral("HKEY_CURRENT_USER\\Software\\T2 Quillbay"),
                                       QSettings::NativeFormat);
}

} // namespace quillbay
