#include "shell/MenuWindows.h"

#include "library/frmInstalledMods.h"
#include "odf/frmOdfChecker.h"
#include "shell/frmSelector.h"
#include "ui_frmSelector.h"

#include <array>

namespace quillbay {

namespace {

struct Opener {
    QAction* Ui::frmSelector::*item;
    /// `item` is where most windows set their check mark.
    std::unique_ptr<EffectWindow> (*make)(frmSelector& main, Ui::frmSelector& controls, QAction* item);
};

/// For windows that need nothing but the main window.
template <typename Window>
std::unique_ptr<EffectWindow> Make(frmSelector& main, Ui::frmSelector&, QAction* item) {
    return std::make_unique<Window>(main, item);
}

constexpr std::array kOpeners{
    Opener{&Ui::frmSelector::menuManagerCheckInstalledMods, Make<frmInstalledMods>},
    Opener{&Ui::frmSelector::menuModOpenOdfChecker, Make<frmOdfChecker>},
};

} // namespace

MenuWindows::MenuWindows(frmSelector& main, Ui::frmSelector& controls) : windows_(kOpeners.size()) {
    for (std::size_t at = 0; at < kOpeners.size(); ++at) {
        QAction* item = controls.*kOpeners[at].item;
        QObject::connect(item, &QAction::triggered, &main, [this, at, item, &main, &controls] {
            if (!windows_[at]) windows_[at] = kOpeners[at].make(main, controls, item);
            windows_[at]->Open();
        });
    }
}

MenuWindows::~MenuWindows() = default;

} // namespace quillbay
