#pragma once

#include <functional>

class QAction;

namespace quillbay {

namespace Ui {
class frmSelector;
}

class AppSettings;
class LibraryHost;

/// The menus of the main window: names of their separators, what the disk allows to be chosen, and the
/// switches of the Smooth closing submenu, which are stored when they are switched.
class MainMenus {
public:
    MainMenus(LibraryHost& main, Ui::frmSelector& controls);

    /// Runs the command whenever the item is chosen and the disk allows it; says why not at the main window's
    /// foot.
    void Connect(QAction& item, const std::function<void()>& command);
    void ReadSwitches(const AppSettings& settings);
    /// The Manager, Mod and Help menus, with their shortcuts.
    void SetEnabled(bool enabled);

private:
    void NameSeparators();
    void menuSelector_Click();
    /// Whether the item would be enabled if its menu opened now, which a shortcut does not do; tells the user
    /// if not.
    bool MayRun(const QAction& item);

    LibraryHost& main_;
    Ui::frmSelector& controls_;
};

} // namespace quillbay
