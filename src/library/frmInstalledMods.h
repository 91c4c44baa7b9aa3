#pragma once

#include "effects/EffectWindow.h"
#include "library/ModRows.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace quillbay {

namespace Ui {
class frmInstalledMods;
}

struct Services;

/// The list of the mods and addons that are installed.
class frmInstalledMods : public EffectWindow {
    Q_OBJECT

public:
    /// `mainRows` gives the rows of the main list, without its placeholder.
    frmInstalledMods(EffectHost& host, QAction* menuItem, const Services& services,
                     std::function<std::vector<ModRow>()> mainRows);
    ~frmInstalledMods() override;

    /// What a rebuild of the main list does here: mods only; addons come back when the window is activated.
    /// A window that is not open is filled when it opens.
    void Rebuild(const std::vector<ModRow>& rows);
    /// Selects the row with exactly this text; without one the selection stays.
    void SelectRow(std::string_view text);

protected:
    void Form_Load() override { Fill(); }
    void Form_Activate() override { Fill(); }

private:
    void Fill();
    void Show(const std::vector<ModRow>& rows);

    const Services& services_;
    std::function<std::vector<ModRow>()> mainRows_;
    std::unique_ptr<Ui::frmInstalledMods> ui_;
    QStringList shown_;
};

} // namespace quillbay
