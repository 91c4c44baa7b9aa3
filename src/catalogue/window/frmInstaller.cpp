#include "catalogue/window/frmInstaller.h"

#include "common/window/Hourglass.h"
#include "common/window/OutcomeText.h"
#include "common/window/QtText.h"
#include "common/window/RowClicks.h"
#include "common/window/ShowMessage.h"
#include "common/window/UpdateLock.h"
#include "library/ModRows.h"
#include "library/window/LibraryHost.h"
#include "platform/PathText.h"
#include "platform/ShellOpener.h"
#include "ui_frmInstaller.h"

#include <QPointer>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::size_t kNamedFailures = 10;
constexpr char kNothingToSort[] = "No file that lies directly in the mod's own folder fits a type.";

void AddCheckRow(QListWidget& list, const QString& text, bool checked, const QVariant& data = {}) {
    auto row = std::make_unique<QListWidgetItem>(text);
    row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    row->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    row->setData(Qt::UserRole, data);
    list.addItem(row.release());
}

/// The row of a type; not "(None)".
bool IsTypeRow(const QListWidgetItem& row) { return row.flags().testFlag(Qt::ItemIsUserCheckable); }

std::size_t TypeOf(const QListWidgetItem& row) {
    return static_cast<std::size_t>(row.data(Qt::UserRole).toULongLong());
}

OutcomeText Outcome(const SortPlan& plan, const SortResult& result) {
    OutcomeText outcome(result.moved > 0 ? QStringLiteral("Loose files are sorted")
                                         : QStringLiteral("No loose file was moved"));
    outcome.Count(result.moved, QStringLiteral("moved"))
        .Files(result.notMoved, QStringLiteral("could not be moved"));
    if (plan.untyped.empty()) return outcome;
    const QString untyped = FileCount(plan.untyped.size()) +
                            (plan.untyped.size() == 1 ? QStringLiteral(" fits no type and lies")
                                                      : QStringLiteral(" fit no type and lie")) +
                            QStringLiteral(" in the mod's own folder");
    return outcome.Add(untyped).Note(
        untyped + QStringLiteral(":\n") +
        OutcomeText::Names(plan.untyped, OutcomeText::kMostNamedFiles, QStringLiteral("\n")));
}

QString Report(const SortResult& result) {
    QString text = QStringLiteral("No files installed.");
    if (result.moved == 1) text = QStringLiteral("1 file installed.");
    if (result.moved > 1) text = QStringLiteral("%1 files installed.").arg(result.moved);
    if (result.notMoved.empty()) return text;

    text += QStringLiteral(" These could not be moved: ") +
            OutcomeText::Names(result.notMoved, kNamedFailures, QStringLiteral(", ")) + u'.';
    if (result.leadsBack.empty()) return text;
    return WithPath(text + QStringLiteral(" This folder leads back to the mod's own one:"), result.leadsBack,
                    {});
}

} // namespace

frmInstaller::frmInstaller(LibraryHost& main, QAction* menuItem)
    : EffectWindow(main, menuItem), main_(main), ui_(std::make_unique<Ui::frmInstaller>()) {
    ui_->setupUi(this);
    for (const auto& type : LooseFileTypes)
        if (type.isOffered) ui_->cboBox->addItem(ToQString(type.name));
    ConnectChooser();
    connect(ui_->lstFolders, &QListWidget::itemSelectionChanged, this, &frmInstaller::lstFolders_Click);
    connect(ui_->lstFolders, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem* row) { lstFolders_ItemCheck(*row); });
    connect(ui_->lstFiles, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem* row) { lstFiles_ItemCheck(*row); });
    connect(ui_->cmdSelectAll, &QPushButton::clicked, this, [this] { CheckAllTypes(Qt::Checked); });
    connect(ui_->cmdSelectNone, &QPushButton::clicked, this, [this] { CheckAllTypes(Qt::Unchecked); });
    connect(ui_->cmdInstall, &QPushButton::clicked, this, &frmInstaller::cmdInstall_Click);
    connect(ui_->cboBox, &QComboBox::editTextChanged, this, &frmInstaller::cboBox_Click);
}

frmInstaller::~frmInstaller() = default;

void frmInstaller::ConnectChooser() {
    ConnectRowClicks(*ui_->lstChooser, [this] { lstChooser_Click(); });
    connect(ui_->lstChooser, &QListWidget::itemDoubleClicked, this, &frmInstaller::lstChooser_DblClick);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        new QShortcut(key, ui_->lstChooser, this, &frmInstaller::lstChooser_DblClick, Qt::WidgetShortcut);
}

void frmInstaller::Form_Load() {
    FillChooser();
    ui_->cboBox->setEditText(QStringLiteral("bzn"));
    cboBox_Click();
}

void frmInstaller::FillChooser() {
    {
        const QSignalBlocker quiet(ui_->lstChooser);
        ui_->lstChooser->clear();
        const auto mods =
            main_.GetServices().files.List(LibraryFolder(main_.ProgramDirectory), Detail::Names).ValueOr({});
        for (const DirEntry& entry : mods) { // plain files, too, in which no loose files are found
            const bool isFolder = entry.kind == EntryKind::Folder && !entry.name.starts_with(kLeftoverPrefix);
            if (!isFolder && !entry.IsPlainFile()) continue;
            auto* row = new QListWidgetItem(ToQString(entry.name), ui_->lstChooser);
            row->setData(Qt::UserRole, true);
        }
        if (ui_->lstChooser->count() == 0) ui_->lstChooser->addItem(ToQString(kNoModsRow));
        ui_->lstChooser->setCurrentRow(0);
    }
    loose_ = {};
    ui_->lstFolders->clear();
    lstFolders_Click();
    SetButtons();
    lstChooser_Click();
}

std::string frmInstaller::SelectedFolder() const {
    const auto rows = ui_->lstChooser->selectedItems();
    if (rows.isEmpty() || !rows.front()->data(Qt::UserRole).toBool()) return {};
    return Join(LibraryFolder(main_.ProgramDirectory), FromQString(rows.front()->text()));
}

void frmInstaller::lstChooser_Click() {
    if (const auto folder = SelectedFolder(); !folder.empty()) Choose(folder);
}

void frmInstaller::lstChooser_DblClick() {
    const auto folder = SelectedFolder();
    if (!folder.empty()) Ignore(main_.GetServices().shell.OpenWithShell(folder));
}

void frmInstaller::Choose(const std::string& folder) {
    const UpdateLock lock(*this);
    const Hourglass busy;
    loose_ = ListLooseFiles(main_.GetServices().files, folder);
    ShowTypes();
}

void frmInstaller::ShowTypes() {
    {
        const QSignalBlocker quiet(ui_->lstFolders);
        ui_->lstFolders->clear();
        for (std::size_t type = 0; type < kLooseFileTypeCount; ++type) {
            if (loose_.byType[type].empty()) continue;
            AddCheckRow(*ui_->lstFolders, ToQString(LooseFileTypes[type].name), true,
                        QVariant::fromValue<qulonglong>(type));
            ui_->lstFolders->item(ui_->lstFolders->count() - 1)
                ->setToolTip(FileCount(loose_.byType[type].size()));
        }
        if (ui_->lstFolders->count() == 0) {
            auto* none = new QListWidgetItem(QStringLiteral("(None)"), ui_->lstFolders);
            none->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            none->setToolTip(QLatin1String(kNothingToSort));
        }
    }
    lstFolders_Click();
    SetButtons();
}

void frmInstaller::lstFolders_Click() {
    const UpdateLock lock(*this);
    const QSignalBlocker quiet(ui_->lstFiles);
    ui_->lstFiles->clear();
    shownType_.reset();
    const auto rows = ui_->lstFolders->selectedItems();
    if (rows.isEmpty() || !IsTypeRow(*rows.front())) return;
    shownType_ = TypeOf(*rows.front());
    for (const auto& file : loose_.byType[*shownType_])
        AddCheckRow(*ui_->lstFiles, ToQString(loose_.names[file.number]), file.flagged);
}

QListWidgetItem* frmInstaller::ShownRow() const {
    for (int at = 0; shownType_ && at < ui_->lstFolders->count(); ++at) {
        auto* row = ui_->lstFolders->item(at);
        if (TypeOf(*row) == *shownType_) return row;
    }
    return nullptr;
}

void frmInstaller::lstFolders_ItemCheck(const QListWidgetItem& row) {
    if (&row == ShownRow()) {
        const UpdateLock lock(*this);
        const QSignalBlocker quiet(ui_->lstFiles);
        for (int at = 0; at < ui_->lstFiles->count(); ++at)
            ui_->lstFiles->item(at)->setCheckState(row.checkState());
        for (auto& file : loose_.byType[*shownType_])
            file.flagged = row.checkState() == Qt::Checked;
    }
    SetButtons();
}

void frmInstaller::lstFiles_ItemCheck(const QListWidgetItem& row) {
    auto& shown = loose_.byType[*shownType_];
    shown[static_cast<std::size_t>(ui_->lstFiles->row(&row))].flagged = row.checkState() == Qt::Checked;
    const UpdateLock lock(*this);
    const QSignalBlocker quiet(ui_->lstFolders);
    ShownRow()->setCheckState(std::ranges::any_of(shown, &TypedFile::flagged) ? Qt::Checked : Qt::Unchecked);
    SetButtons();
}

void frmInstaller::CheckAllTypes(Qt::CheckState state) {
    for (int at = 0; at < ui_->lstFolders->count(); ++at)
        if (auto* row = ui_->lstFolders->item(at); IsTypeRow(*row)) row->setCheckState(state);
    ui_->lstFolders->repaint();
    ui_->lstFolders->setFocus();
}

void frmInstaller::SetButtons() {
    int checked = 0;
    for (int at = 0; at < ui_->lstFolders->count(); ++at)
        if (ui_->lstFolders->item(at)->checkState() == Qt::Checked) ++checked;
    ui_->cmdSelectAll->setEnabled(checked < ui_->lstFolders->count());
    ui_->cmdSelectNone->setEnabled(checked > 0);
    ui_->cmdInstall->setEnabled(checked > 0);
    const bool hasTypes = ui_->lstFolders->count() > 0 && IsTypeRow(*ui_->lstFolders->item(0));
    ui_->cmdInstall->setToolTip(checked > 0 ? QString()
                                : hasTypes  ? QStringLiteral("No file type is checked.")
                                            : QLatin1String(kNothingToSort));
}

void frmInstaller::cboBox_Click() {
    if (const auto help = LooseFileHelp(FromQString(ui_->cboBox->currentText())))
        ui_->lblHelp->setText(ToQString(*help));
}

void frmInstaller::SetListsEnabled(bool enabled) {
    for (QListWidget* list : {ui_->lstFolders, ui_->lstChooser, ui_->lstFiles})
        list->setEnabled(enabled);
}

void frmInstaller::cmdInstall_Click() {
    SetListsEnabled(false);
    TypeChecks checks;
    for (int at = 0; at < ui_->lstFolders->count(); ++at) {
        const auto& row = *ui_->lstFolders->item(at);
        if (IsTypeRow(row)) checks[TypeOf(row)] = row.checkState() == Qt::Checked;
    }
    SortPlan plan;
    SortResult result;
    {
        const Hourglass busy;
        FileSystem& files = main_.GetServices().files;
        plan = PlanSorting(files, loose_, checks, main_.GameDirectory);
        result = RunSorting(files, plan);
    }
    if (!plan.wayIntoGame.empty()) {
        const QPointer<frmInstaller> open = this;
        ShowError(this,
                  WithPath(QStringLiteral("The mod leads into the game through this, so nothing was moved."),
                           plan.wayIntoGame, {}));
        if (open) SetListsEnabled(true);
        return;
    }
    main_.ShowOutcome(Outcome(plan, result));
    const QPointer<frmInstaller> self = this;
    ShowMessage(this, Report(result));
    if (!self) return;
    SetListsEnabled(true);
    if (result.moved > 0) Choose(loose_.folder);
    ui_->lstChooser->setFocus();
}

} // namespace quillbay
