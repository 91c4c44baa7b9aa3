#include "library/window/frmInstalledMods.h"

#include "common/window/QtText.h"
#include "library/InstalledMods.h"
#include "shell/window/frmSelector.h"
#include "ui_frmInstalledMods.h"

#include <algorithm>
#include <iterator>

namespace quillbay {

frmInstalledMods::frmInstalledMods(frmSelector& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmInstalledMods>()) {
    ui_->setupUi(this);
    connect(&main, &frmSelector::ModListRebuilt, this, &frmInstalledMods::FollowMainList);
}

frmInstalledMods::~frmInstalledMods() = default;

void frmInstalledMods::FollowMainList() {
    if (!isVisible()) return;
    std::vector<ModRow> mods;
    std::copy_if(main_.ModRows().begin(), main_.ModRows().end(), std::back_inserter(mods),
                 [](const ModRow& row) { return !row.IsAddon(); });
    Show(FilterInstalled(main_.GetServices().files, ModsFolder(main_.ProgramDirectory), mods));
    const auto selected = main_.SelectedMod();
    if (!selected) return;
    const auto found =
        ui_->lstCurrentMods->findItems(ToQString(selected->text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty()) ui_->lstCurrentMods->setCurrentItem(found.front());
}

void frmInstalledMods::Fill() {
    Show(FilterInstalled(main_.GetServices().files, ModsFolder(main_.ProgramDirectory), main_.ModRows()));
}

void frmInstalledMods::Show(const std::vector<ModRow>& rows) {
    QStringList texts;
    for (const ModRow& row : rows)
        texts += ToQString(row.text);
    if (texts.isEmpty()) texts += ToQString(kNoModsRow);
    if (texts != shown_) {
        shown_ = texts;
        ui_->lstCurrentMods->clear();
        ui_->lstCurrentMods->addItems(texts);
    }
    ui_->lstCurrentMods->setCurrentRow(0);
}

} // namespace quillbay
