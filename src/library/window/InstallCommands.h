#pragma once

#include "library/ModJob.h"
#include "library/WriteRefusal.h"

#include <QString>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QAction;
class QProgressBar;
class QPushButton;
class QWidget;

namespace quillbay {

class BusyGuard;
class FileSystem;
class LibraryHost;
class ShownProgress;
struct InstallResult;
struct UninstallResult;
struct UninstallSummary;

/// The main window's controls for installing and uninstalling.
struct InstallControls {
    QPushButton& install;
    QAction& installItem;
    QPushButton& uninstall;
    QAction& uninstallItem;
    QProgressBar& progress;
};

/// The commands that put the selected mod into the game and take it, or every mod, out again: ask the user,
/// let the plan run, say what was done.
class InstallCommands {
public:
    InstallCommands(LibraryHost& main, const InstallControls& controls);

    void InstallMod();
    void UninstallMod();
    /// Every installed mod, the newest first, until one still counts as installed. The question appears on
    /// `asking`.
    void UninstallAll(QWidget& asking);

private:
    std::optional<ModJob> JobForSelection(QString& displayName);
    bool ModStillThere(const ModJob& job, BusyGuard& busy);
    InstallResult CopyMod(const ModJob& job, const std::function<void()>& onCopying);
    /// Of the game's folder, when that is why something of the mod had to stay.
    WriteRefusal FindRefusal(const UninstallResult& result);
    /// `share` is the part of the whole work that this mod is: the bar's range in per cent.
    UninstallResult TakeModOut(const ModJob& job, const std::function<void(const QString&)>& setCaption,
                               ShownProgress& progress, std::pair<int, int> share = {0, 100});
    /// Nothing is asked any more.
    UninstallSummary TakeModsOut(const std::vector<InstalledMod>& mods, BusyGuard& busy);

    LibraryHost& main_;
    const InstallControls controls_;
    FileSystem& files_;
    QWidget* window_;
};

} // namespace quillbay
