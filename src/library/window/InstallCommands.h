#pragma once

#include "library/ModJob.h"

#include <QString>

#include <functional>
#include <optional>

class QAction;
class QProgressBar;
class QPushButton;
class QWidget;

namespace quillbay {

class BusyGuard;
class FileSystem;
class LibraryHost;
struct InstallResult;
struct UninstallResult;

/// The main window's controls for installing and uninstalling.
struct InstallControls {
    QPushButton& install;
    QAction& installItem;
    QPushButton& uninstall;
    QAction& uninstallItem;
    QProgressBar& progress;
};

/// The commands that put the selected mod into the game and take it out again: ask the user, let the plan
/// run, say what was done.
class InstallCommands {
public:
    InstallCommands(LibraryHost& main, const InstallControls& controls);

    void InstallMod();
    void UninstallMod();

private:
    std::optional<ModJob> JobForSelection(QString& displayName);
    bool ModStillThere(const ModJob& job, BusyGuard& busy);
    InstallResult CopyMod(const ModJob& job, const std::function<void()>& onCopying);
    UninstallResult TakeModOut(const ModJob& job, const std::function<void(const QString&)>& setCaption);

    LibraryHost& main_;
    const InstallControls controls_;
    FileSystem& files_;
    QWidget* window_;
};

} // namespace quillbay
