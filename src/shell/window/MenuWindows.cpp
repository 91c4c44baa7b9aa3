#include "shell/window/MenuWindows.h"

#include "catalogue/window/frmFindModifiedFiles.h"
#include "catalogue/window/frmInstaller.h"
#include "effects/window/frmOptions.h"
#include "help/window/frmAbout.h"
#include "help/window/frmChanges.h"
#include "help/window/frmReadme.h"
#include "library/window/frmInstalledMods.h"
#include "modinfo/window/frmCompatability.h"
#include "modinfo/window/frmEditModInfo.h"
#include "modinfo/window/frmTechTree.h"
#include "odf/window/frmAnalyzer.h"
#include "odf/window/frmOdfChecker.h"
#include "shell/window/MainMenus.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

struct Opener {
    QAction* Ui::frmSelector::*item;
    /// `item` is where most windows set their check mark.
    std::unique_ptr<EffectWindow> (*make)(frmSelector& main, Ui::frmSelector& controls, QAction* item);
};

/// For windows that need nothing but what they share of the main window.
template <typename Window>
std::unique_ptr<EffectWindow> Make(frmSelector& main, Ui::frmSelector&, QAction* item) {
    return std::make_unique<Window>(main, item);
}

std::unique_ptr<EffectWindow> MakeOptions(frmSelector& main, Ui::frmSelector& controls, QAction*) {
    return std::make_unique<frmOptions>(
        main, main.GetServices().settings,
        SmoothClosingItems{.xAxis = controls.menuManagerSmoothClosingXAxis,
                           .yAxis = controls.menuManagerSmoothClosingYAxis,
                           .simultaneous = controls.menuManagerSmoothClosingSimultaneous,
                           .mainWindowOnly = controls.menuManagerSmoothClosingMainWindowOnly});
}

/// Previews how the details panel would show what is typed.
std::unique_ptr<EffectWindow> MakeEditor(frmSelector& main, Ui::frmSelector&, QAction* item) {
    return std::make_unique<frmEditModInfo>(main, main.Details(), item);
}

/// Its check mark stands on the submenu's own entry.
std::unique_ptr<EffectWindow> MakeFinder(frmSelector& main, Ui::frmSelector& controls, QAction*) {
    return std::make_unique<frmFindModifiedFiles>(main, controls.menuManagerModFiles->menuAction());
}

constexpr std::array kOpeners{
    Opener{&Ui::frmSelector::menuManagerCheckInstalledMods, Make<frmInstalledMods>},
    Opener{&Ui::frmSelector::menuManagerFileInstaller, Make<frmInstaller>},
    Opener{&Ui::frmSelector::menuManagerFindModifiedFiles, MakeFinder},
    Opener{&Ui::frmSelector::menuManagerOptions, MakeOptions},
    Opener{&Ui::frmSelector::menuModCompatablility, Make<frmCompatability>},
    Opener{&Ui::frmSelector::menuModEdit, MakeEditor},
    Opener{&Ui::frmSelector::menuModAnalyzeMod, Make<frmAnalyzer>},
    Opener{&Ui::frmSelector::menuModTechTree, Make<frmTechTree>},
    Opener{&Ui::frmSelector::menuModOpenOdfChecker, Make<frmOdfChecker>},
    Opener{&Ui::frmSelector::menuHelpAbout, Make<frmAbout>},
    Opener{&Ui::frmSelector::menuHelpViewReadme, Make<frmReadme>},
    Opener{&Ui::frmSelector::menuHelpChanges, Make<frmChanges>},
};

} // namespace

MenuWindows::MenuWindows(frmSelector& main, Ui::frmSelector& controls, MainMenus& menus)
    : windows_(kOpeners.size()) {
    for (std::size_t at = 0; at < kOpeners.size(); ++at) {
        QAction* item = controls.*kOpeners[at].item;
        menus.Connect(*item, [this, at, item, &main, &controls] {
            if (!windows_[at]) windows_[at] = kOpeners[at].make(main, controls, item);
            windows_[at]->Open();
        });
    }
}

MenuWindows::~MenuWindows() = default;

bool MenuWindows::MayEnd() {
    return std::ranges::all_of(windows_, [](const std::unique_ptr<EffectWindow>& window) {
        return !window || !window->isVisible() || window->Form_QueryUnload();
    });
}

} // namespace quillbay
