#include "library/frmInstalledMods.h"

#include "common/QtText.h"
#include "library/InstalledMods.h"
#include "shell/Services.h"
#include "ui_frmInstalledMods.h"

#include <algorithm>

namespace quillbay {

frmInstalledMods::frmInstalledMods(EffectHost& host, QAction* menuItem, const Services& services,
                                   std::function<std::vector<ModRow>()> mainRows)
    : EffectWindow(host, menuItem), services_(services), mainRows_(std::move(mainRows)),
      ui_(std::make_unique<Ui::frmInstalledMods>()) {
    ui_->setupUi(this);
}

frmInstalledMods::~frmInstalledMods() = default;

void frmInstalledMods::Rebuild(const std::vector<ModRow>& rows) {
    if (!isVisible()) return;
    std::vector<ModRow> mods;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(mods),
                 [](const ModRow& row) { return !row.IsAddon(); });
    Show(FilterInstalled(services_.files, ModsFolder(services_.programDirectory), mods));
}

void frmInstalledMods::SelectRow(std::string_view text) {
    const auto found =
        ui_->lstCurrentMods->findItems(ToQString(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty()) ui_->lstCurrentMods->setCurrentItem(found.front());
}

void frmInstalledMods::Fill() {
    Show(FilterInstalled(services_.files, ModsFolder(services_.programDirectory), mainRows_()));
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
