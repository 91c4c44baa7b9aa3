#include "common/window/UpdateLock.h"
#include "modinfo/ModDetails.h"
#include "modinfo/window/ModPicture.h"
#include "platform/PathText.h"
#include "shell/window/frmSelector.h"
#include "ui_frmSelector.h"

namespace quillbay {

void frmSelector::ShowModDetails() {
    const auto row = ui_->lstMods->SelectedRow();
    if (!row || row->path.Empty()) {
        details_.ShowNoMod();
        emit Signals.ModDetailsShown();
        return;
    }
    const std::string folder = Join(ModsFolder(ProgramDirectory), row->path.text);
    const ModDetails details = ReadModDetails(services_.files, folder);
    const QPixmap picture = LoadModPicture(services_.files, details.pictures);
    const UpdateLock lock(*this);
    ui_->menuModCurrentModViewReadme->setEnabled(details.hasReadme);
    ShowPictureLayout(details.hasPicture);
    details_.Show(details, picture);
    ui_->lstMods->setFocus();
    emit Signals.ModDetailsShown();
}

} // namespace quillbay
