#include "modinfo/window/frmTechTree.h"

#include "common/window/QtText.h"
#include "common/window/RowClicks.h"
#include "library/window/LibraryHost.h"
#include "modinfo/TechTrees.h"
#include "ui_frmTechTree.h"

#include <QSignalBlocker>

namespace quillbay {

namespace {

/// One name a line, each line with its end.
QString Lines(const std::vector<std::string_view>& names) {
    QString text;
    for (const std::string_view name : names)
        text += ToQString(name) + QStringLiteral("\r\n");
    return text;
}

} // namespace

frmTechTree::frmTechTree(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmTechTree>()) {
    ui_->setupUi(this);
    ConnectRowClicks(*ui_->lstMods, [this] { lstMods_Click(); });
}

frmTechTree::~frmTechTree() = default;

void frmTechTree::Form_Load() {
    rows_ = main_.ModRows();
    if (rows_.empty()) rows_.push_back({std::string(kNoModsRow), {}});
    const QSignalBlocker quiet(ui_->lstMods);
    ui_->lstMods->clear();
    for (const ModRow& row : rows_)
        ui_->lstMods->addItem(ToQString(row.text));
    ui_->lstMods->setCurrentRow(0);
    lstMods_Click();
}

void frmTechTree::lstMods_Click() {
    const auto selected = ui_->lstMods->selectionModel()->selectedRows();
    if (selected.isEmpty()) return;
    const ModRow& row = rows_[static_cast<std::size_t>(selected.front().row())];
    const TechTrees trees =
        FindTechTrees(main_.GetServices().files, LibraryFolder(main_.ProgramDirectory), row.path);
    ui_->lblAvailableList->setText(Lines(trees.available));
    ui_->lblUnavailableList->setText(Lines(trees.unavailable));
}

} // namespace quillbay
