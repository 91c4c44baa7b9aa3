#pragma once

#include "effects/window/EffectHost.h"
#include "library/ModRows.h"
#include "library/window/Services.h"

#include <QObject>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class QAction;

namespace quillbay {

class OutcomeText;

/// How RefreshModList does its work.
struct RefreshOptions {
    bool keepControls = false; ///< silent: captions, pointer, enabled states and the file count stay
    bool keepDetails = false;  ///< the details panel is filled later in the same user action
};

/// What the main window tells the other ones.
class LibrarySignals : public QObject {
    Q_OBJECT

signals:
    /// The list was rebuilt, whether its rows changed or not.
    void ModListRebuilt();
    /// The automatic refresh has found other mods installed than before; the list has the same rows.
    void InstalledModsChanged();
    /// The details panel was filled, for the same mod or another one.
    void ModDetailsShown();
};

/// All that the other windows know of the main window, which implements this: what they share of it.
class LibraryHost : public EffectHost {
public:
    /// The game's installation folder, or kGameNotFound.
    std::string GameDirectory;
    /// Without a final separator.
    std::string ProgramDirectory;
    LibrarySignals Signals;

    const Services& GetServices() const { return services_; }
    /// Whether a command may begin: keys come while its menu item is disabled, and while the program ends.
    bool CanStart(const QAction& item) const;

    /// Reads the mods folder and rebuilds the list.
    virtual void RefreshModList(const RefreshOptions& options) = 0;
    /// The rows that the list shows; none for the placeholder.
    virtual const std::vector<ModRow>& ModRows() const = 0;
    /// The selected row; for the placeholder its text with an empty path.
    virtual std::optional<ModRow> SelectedMod() const = 0;
    /// Selects the mod's row, as a click on it does. False when the list does not have it.
    virtual bool SelectMod(const ModPath& path) = 0;
    /// Rebuilds the list with a mod that has come, and selects it; the details panel is filled once.
    void ShowNewMod(const ModPath& path);
    /// Fills the details panel for the selected row.
    virtual void ShowModDetails() = 0;
    /// The number of files of the selected mod, as the details panel shows it.
    virtual std::optional<std::size_t> ShownFileCount() const = 0;
    /// Says at the main window's foot what a command has done; its tool tip names the files concerned.
    virtual void ShowOutcome(const OutcomeText& outcome) = 0;
    /// Asks on that window, then uninstalls every installed mod, the newest first.
    virtual void UninstallAll(QWidget& asking) = 0;
    /// The Manager, Mod and Help menus, with their shortcuts.
    virtual void SetMainMenusEnabled(bool enabled) = 0;
    /// Asks every open window whether the program may end; false when one of them must stay.
    virtual bool MayEnd() = 0;
    /// Ends the program at once: no effect runs, no window is asked.
    virtual void EndProgram() = 0;

protected:
    explicit LibraryHost(const Services& services);

    const Services services_;
};

} // namespace quillbay
