#pragma once

#include "common/window/OutcomeText.h"
#include "library/JobPreview.h"
#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"

#include <QString>

#include <string>
#include <vector>

namespace quillbay {

/// Why nothing was installed, with the file concerned; empty when the mod was installed.
QString WhyNotInstalled(const InstallResult& result);
/// Why the mod still counts as installed; empty when `Backup` is gone.
QString WhyStillInstalled(const UninstallResult& result);

/// What the questions say beside their prescribed texts; empty when there is nothing to say.
QString Describe(const InstallPreview& preview);
QString Describe(const InstalledState& state);
/// The same for the list of installed mods, where a mod that is as it was installed is told, too.
QString DescribeInstalled(const InstalledState& state);

/// What the question says before all mods are uninstalled; `game` is the real path of the game directory.
QString DescribeOrder(const std::vector<InstalledMod>& newestFirst, const std::string& game);

/// What happened to the mod of that name, for the foot of the main window.
OutcomeText Describe(const InstallResult& result, const QString& name);
OutcomeText Describe(const UninstallResult& result, const QString& name);
OutcomeText Describe(const UninstallSummary& summary);

} // namespace quillbay
