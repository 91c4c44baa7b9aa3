#pragma once

#include "common/window/OutcomeText.h"
#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"

#include <QString>

namespace quillbay {

/// Why nothing was installed, with the file concerned; empty when the mod was installed.
QString WhyNotInstalled(const InstallResult& result);
/// Why the mod still counts as installed; empty when `Backup` is gone.
QString WhyStillInstalled(const UninstallResult& result);

/// What happened to the mod of that name, for the foot of the main window.
OutcomeText Describe(const InstallResult& result, const QString& name);
OutcomeText Describe(const UninstallResult& result, const QString& name);

} // namespace quillbay
