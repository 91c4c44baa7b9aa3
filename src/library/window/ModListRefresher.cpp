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
        PrepareModsFolder(files_, main_.ProgramDirectory);
        if (busy && !options.skipCount) {
            busy->SetCaption(QStringLiteral("Counting files"));
            CountGameFiles(options);
        }
        if (busy) busy->SetCaption(QStringLiteral("Refresing mod list"));
        const auto modsFolder = ModsFolder(main_.ProgramDirectory);
        const auto rows = ScanModLibrary(files_, modsFolder);
        SweepGivenUpBackups(files_, modsFolder, rows);
        controls_.mods.SetRows(rows);
    }
    emit main_.Signals.ModListRebuilt();
    SetButtons();
    if (!options.keepDetails) main_.ShowModDetails();
}

void ModListRefresher::CountGameFiles(const RefreshOptions& options) {
    if (!IsExistingFolder(files_, main_.GameDirectory)) {
        ShowNoGame();
        return;
    }
    std::optional<ShownProgress> progress;
    if (!options.hideProgress) progress.emplace(controls_.progress);
    const std::size_t total =
        CountKnownFiles(files_, main_.GameDirectory, [&](std::size_t position, std::size_t) {
            if (progress) progress->Set(position + 1, kGameFolderCount);
            return true;
        });
    controls_.gameFiles.setText(QString::number(total));
}

void ModListRefresher::SetButtons() {
    const auto row = controls_.mods.SelectedRow();
    const bool installed = row && !row->path.Empty() &&
                           IsInstalled(files_, Join(ModsFolder(main_.ProgramDirectory), row->path.text));
    controls_.uninstall.setEnabled(installed);
    controls_.install.setEnabled(true);
}

void ModListRefresher::FollowDisk() {
    const bool made = PrepareModsFolder(files_, main_.ProgramDirectory);
    const auto rows = ScanModLibrary(files_, ModsFolder(main_.ProgramDirectory));
    FillSortItems(controls_.sortItems, rows);
    if (!made && rows == controls_.mods.Rows()) return;
    main_.RefreshModList({.hideProgress = true, .keepControls = true, .skipCount = true});
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
