#include "help/frmChanges.h"

#include "common/QtText.h"
#include "common/Version.h"
#include "shell/frmSelector.h"
#include "ui_frmChanges.h"

namespace quillbay {

frmChanges::frmChanges(frmSelector& main, QAction* menuItem)
    : OkWindow(main, menuItem), ui_(std::make_unique<Ui::frmChanges>()) {
    ui_->setupUi(this);
    ui_->lblVersion->setText(QStringLiteral("Version ") + ToQString(kVersion));
    SetOkButton(*ui_->OKButton);
}

frmChanges::~frmChanges() = default;

} // namespace quillbay
