#pragma once

#include <memory>
#include <vector>

namespace quillbay {

namespace Ui {
class frmSelector;
}

class EffectWindow;
class MainMenus;
class frmSelector;

/// The windows that menu items of the main window open. Each is made when it is opened first and then lives
/// as long as the main window, so that it keeps what it holds when it is closed and opened again.
class MenuWindows {
public:
    /// Connects the menu items.
    MenuWindows(frmSelector& main, Ui::frmSelector& controls, MainMenus& menus);
    ~MenuWindows();

    /// Asks every open window whether the program may end; false when one of them must stay.
    bool MayEnd();

private:
    std::vector<std::unique_ptr<EffectWindow>> windows_;
};

} // namespace quillbay
