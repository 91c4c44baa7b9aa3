#include "help/window/frmChanges.h"

#include "effects/window/EffectHost.h"
#include "ui_frmChanges.h"

namespace quillbay {

frmChanges::frmChanges(EffectHost& main, QAction* menuItem)
    : OkWindow(main, menuItem), ui_(std::make_unique<Ui::frmChanges>()) {
    ui_->setupUi(this);
    SetUp(*ui_->OKButton, *ui_->lblVersion);
}

frmChanges::~frmChanges() = default;

} // namespace quillbay
