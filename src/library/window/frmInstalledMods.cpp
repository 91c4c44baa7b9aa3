#include "library/window/frmInstalledMods.h"

#include "common/window/PlainToolTip.h"
#include "common/window/QtText.h"
#include "library/InstalledMods.h"
#include "library/window/JobReport.h"
#include "library/window/LibraryHost.h"
#include "ui_frmInstalledMods.h"

#include <QHelpEvent>
#include <QMenu>

#include <algorithm>
#include <iterator>

namespace quillbay {

frmInstalledMods::frmInstalledMods(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmInstalledMods>()) {
    ui_->setupUi(this);
    ui_->lstCurrentMods->viewport()->installEventFilter(this);
    MakeMenu();
    connect(&main.Signals, &LibrarySignals::ModListRebuilt, this, &frmInstalledMods::FollowMainList);
    connect(&main.Signals, &LibrarySignals::InstalledModsChanged, this, [this] {
        if (isVisible()) Fill();
    });
}

frmInstalledMods::~frmInstalledMods() = default;

void frmInstalledMods::MakeMenu() {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuInstalledMods"));
    QAction* uninstallAll = menu->addAction(QStringLiteral("Uninstall all"));
    uninstallAll->setObjectName(QStringLiteral("menuInstalledModsUninstallAll"));
    connect(uninstallAll, &QAction::triggered, this, [this] {
        main_.UninstallAll(*this);
        Fill(); // without the addons, too, which a rebuilt main list does not bring
    });
    QListWidget* list = ui_->lstCurrentMods;
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list, &QWidget::customContextMenuRequested, menu,
            [list, menu](QPoint position) { menu->popup(list->viewport()->mapToGlobal(position)); });
}

bool frmInstalledMods::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& list = *ui_->lstCurrentMods;
        auto* item = list.itemAt(static_cast<QHelpEvent*>(event)->pos());
        const auto row = static_cast<std::size_t>(list.row(item));
        if (item && row < rows_.size()) {
            const auto& files = main_.GetServices().files;
            const ModJob job{main_.GameDirectory, LibraryFolder(main_.ProgramDirectory), rows_[row].path};
            item->setToolTip(
                PlainToolTip(DescribeInstalled(LookAtInstalled(files, PlanUninstall(files, job)))));
        }
    }
    return EffectWindow::eventFilter(watched, event);
}

void frmInstalledMods::FollowMainList() {
    if (!isVisible()) return;
    std::vector<ModRow> mods;
    std::copy_if(main_.ModRows().begin(), main_.ModRows().end(), std::back_inserter(mods),
                 [](const ModRow& row) { return !row.IsAddon(); });
    Show(FilterInstalled(main_.GetServices().files, LibraryFolder(main_.ProgramDirectory), mods));
    const auto selected = main_.SelectedMod();
    if (!selected) return;
    const auto found =
        ui_->lstCurrentMods->findItems(ToQString(selected->text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty()) ui_->lstCurrentMods->setCurrentItem(found.front());
}

void frmInstalledMods::Fill() {
    Show(FilterInstalled(main_.GetServices().files, LibraryFolder(main_.ProgramDirectory), main_.ModRows()));
}

void frmInstalledMods::Show(const std::vector<ModRow>& rows) {
    rows_ = rows;
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
