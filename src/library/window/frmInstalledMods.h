#pragma once

#include "effects/window/EffectWindow.h"
#include "library/ModRows.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace quillbay {

namespace Ui {
class frmInstalledMods;
}

class LibraryHost;

/// The list of the mods and addons that are installed.
class frmInstalledMods : public EffectWindow {
    Q_OBJECT

public:
    frmInstalledMods(LibraryHost& main, QAction* menuItem);
    ~frmInstalledMods() override;

protected:
    void Form_Load() override { Fill(); }
    void Form_Activate() override { Fill(); }
    /// A row says how its mod's files stand when the pointer rests on it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The list's context menu.
    void MakeMenu();
    /// Follows a rebuild of the main list and its selection: mods only; addons come back when the window is
    /// activated. A window that is not open is filled when it opens.
    void FollowMainList();
    void Fill();
    void Show(const std::vector<ModRow>& rows);

    LibraryHost& main_;
    std::unique_ptr<Ui::frmInstalledMods> ui_;
    QStringList shown_;
    std::vector<ModRow> rows_; ///< that are shown; none for the placeholder
};

} // namespace quillbay
