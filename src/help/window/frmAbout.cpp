#include "help/window/frmAbout.h"

#include "effects/window/EffectHost.h"
#include "ui_frmAbout.h"

#include <QStyle>

namespace quillbay {

frmAbout::frmAbout(EffectHost& main, QAction* menuItem)
    : OkWindow(main, menuItem), ui_(std::make_unique<Ui::frmAbout>()) {
    ui_->setupUi(this);
    SetUp(*ui_->cmdOK, *ui_->lblVersion);
}

frmAbout::~frmAbout() = default;

void frmAbout::Form_Load() {
    const QIcon own = windowIcon(); // the main window's by now
    const QIcon icon = own.isNull() ? style()->standardIcon(QStyle::SP_MessageBoxInformation) : own;
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    ui_->picIcon->setPixmap(icon.pixmap({size, size}, devicePixelRatioF()));
}

} // namespace quillbay
