#include "library/window/ModListRefresher.h"

#include "common/window/BusyGuard.h"
#include "common/window/PaintClock.h"
#include "common/window/QtText.h"
#include "common/window/ShownProgress.h"
#include "library/GameDirectory.h"
#include "library/GivenUpBackup.h"
#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/window/LibraryHost.h"
#include "library/window/ModListView.h"
#include "platform/PathText.h"

#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <optional>

namespace quillbay {

namespace {

constexpr char kNoFolderCount[] = "(T2 folder not found)";

/// Gives the list these texts; one that has them already is left alone.
void FillSortItems(QListWidget& list, const std::vector<ModRow>& rows) {
    QStringList texts;
    for (const ModRow& row : rows)
        texts += ToQString(row.text);
    bool isFilled = list.count() == texts.size();
    for (int row = 0; isFilled && row < list.count(); ++row)
        isFilled = list.item(row)->text() == texts[row];
    if (isFilled) return;
    list.clear();
    list.addItems(texts);
}

} // namespace

ModListRefresher::ModListRefresher(LibraryHost& main, const ModListControls& controls)
    : main_(main), controls_(controls), files_(main.GetServices().files) {}

void ModListRefresher::RefreshModList(const RefreshOptions& options) {
    {
        std::optional<BusyGuard> busy;
        if (!options.keepControls) {
            busy.emplace(controls_.refresh,
                         std::initializer_list<QObject*>{&controls_.refreshItem, &controls_.mods});
            busy->ShowHourglass();
        }
        PrepareLibraryFolder(files_, main_.ProgramDirectory);
        if (busy) {
            busy->SetCaption(QStringLiteral("Counting files"));
            CountGameFiles();
            busy->SetCaption(QStringLiteral("Refresing mod list"));
        }
        const auto modLibrary = LibraryFolder(main_.ProgramDirectory);
        auto rows = ScanModLibrary(files_, modLibrary);
        if (SweepGivenUpBackups(files_, modLibrary, rows)) rows = ScanModLibrary(files_, modLibrary);
        ShowRows(rows);
    }
    emit main_.Signals.ModListRebuilt();
    if (!options.keepDetails) main_.ShowModDetails();
}

void ModListRefresher::CountGameFiles() {
    if (!IsExistingFolder(files_, main_.GameDirectory)) {
        ShowNoGame();
        return;
    }
    ShownProgress progress(controls_.progress);
    const std::size_t total =
        CountKnownFiles(files_, main_.GameDirectory, [&](std::size_t position, std::size_t) {
            progress.Set(position + 1, kGameFolderCount);
            return true;
        });
    controls_.gameFiles.setText(QString::number(total));
}

void ModListRefresher::SetButtons() {
    const auto row = controls_.mods.SelectedRow();
    SetButtons(row && !row->path.Empty() &&
               IsInstalled(files_, Join(LibraryFolder(main_.ProgramDirectory), row->path.text)));
}

void ModListRefresher::SetButtons(bool isInstalled) {
    // A command that is asking its question or working has disabled its item and its button.
    if (controls_.uninstallItem.isEnabled()) controls_.uninstall.setEnabled(isInstalled);
    if (controls_.installItem.isEnabled()) controls_.install.setEnabled(true);
}

void ModListRefresher::ShowRows(const std::vector<ModRow>& rows) {
    controls_.mods.SetRows(rows);
    const auto selected = controls_.mods.SelectedRow();
    SetButtons(selected && selected->isInstalled);
}

void ModListRefresher::FollowDisk() {
    const bool made = PrepareLibraryFolder(files_, main_.ProgramDirectory);
    const auto rows = ScanModLibrary(files_, LibraryFolder(main_.ProgramDirectory));
    FillSortItems(controls_.sortItems, rows);
    const auto& shown = controls_.mods.Rows();
    if (!made && rows == shown) return;
    if (!made && std::ranges::equal(rows, shown, &ModRow::IsRowOf)) {
        // A mod was installed or uninstalled by somebody else.
        ShowRows(rows);
        emit main_.Signals.InstalledModsChanged();
        return;
    }
    main_.RefreshModList({.keepControls = true});
}

void ModListRefresher::CountAtStart() {
    const auto runs = [this] { return main_.Phase != ProgramPhase::Ended; };
    std::size_t total = 0;
    PaintClock clock;
    const auto showCount = [&](std::size_t, std::size_t soFar) {
        controls_.gameFiles.setText(QString::number(soFar));
        if (clock.Due()) {
            controls_.gameFiles.repaint();
            QCoreApplication::processEvents();
        }
        return runs();
    };
    if (IsExistingFolder(files_, main_.GameDirectory))
        total = CountKnownFiles(files_, main_.GameDirectory, showCount);
    if (!runs()) return;
    controls_.gameFiles.setText(QString::number(total));
    QCoreApplication::processEvents();
}

void ModListRefresher::ShowNoGame() { controls_.gameFiles.setText(QLatin1String(kNoFolderCount)); }

} // namespace quillbay
