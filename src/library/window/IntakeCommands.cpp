#include "library/window/IntakeCommands.h"

#include "common/window/FolderOrFileDialog.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/ModRows.h"
#include "library/window/LibraryHost.h"
#include "library/window/ModNameQuestion.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>

namespace quillbay {

namespace {

/// Paths of the files that a drag carries; empty when it carries anything else.
QStringList DraggedPaths(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile()) return {};
        paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

IntakeCommands::IntakeCommands(LibraryHost& main, const IntakeControls& controls)
    : main_(main), controls_(controls), files_(main.GetServices().files), window_(&main.MainWindow()),
      menuNoMods_(new QMenu(window_)) {
    menuNoMods_->setObjectName(QStringLiteral("menuNoMods"));
    menuNoMods_->addAction(&controls_.addItem);
    MakeOutcomeMenu();
    window_->setAcceptDrops(true);
    window_->installEventFilter(this);
    connect(&controls_.addItem, &QAction::triggered, this, &IntakeCommands::AddModFromFile);
}

void IntakeCommands::MakeOutcomeMenu() {
    auto* menu = new QMenu(window_);
    menu->setObjectName(QStringLiteral("menuOutcome"));
    menu->addAction(&controls_.addItem);
    QLabel* outcome = &controls_.outcome;
    QAction* copy = menu->addAction(QStringLiteral("Copy"));
    copy->setObjectName(QStringLiteral("menuOutcomeCopy"));
    connect(copy, &QAction::triggered, outcome, [outcome] {
        QApplication::clipboard()->setText(outcome->hasSelectedText() ? outcome->selectedText()
                                                                      : outcome->text());
    });
    outcome->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(outcome, &QWidget::customContextMenuRequested, menu,
            [outcome, menu](QPoint position) { menu->popup(outcome->mapToGlobal(position)); });
}

bool IntakeCommands::IsIdle() const {
    return !isBusy_ && controls_.addItem.isEnabled() && main_.Phase == ProgramPhase::Running &&
           !QApplication::activeModalWidget();
}

bool IntakeCommands::eventFilter(QObject*, QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
    auto& drop = static_cast<QDropEvent&>(*event);
    const QStringList paths = DraggedPaths(*drop.mimeData());
    const bool isTaken = IsIdle() && !paths.isEmpty() && (drop.possibleActions() & Qt::CopyAction);
    if (isTaken) drop.setDropAction(Qt::CopyAction); // after a move the other program would delete its file
    drop.setAccepted(isTaken);
    // The program that was dragged from waits for the end of this event.
    if (isTaken && type == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, paths] { Take(paths); }, Qt::QueuedConnection);
    return true;
}

void IntakeCommands::AddModFromFile() {
    if (!IsIdle()) return;
    FolderOrFileDialog dialog(window_, controls_.addItem.text(),
                              QStandardPaths::writableLocation(QStandardPaths::DownloadLocation),
                              QStringLiteral("Archives and folders"));
    if (dialog.exec() == QDialog::Accepted) Take({dialog.ChosenPath()});
}

void IntakeCommands::Take(const QStringList& paths) {
    if (!IsIdle()) return;
    isBusy_ = true;
    main_.SetMainMenusEnabled(false);
    PrepareLibraryFolder(files_, main_.ProgramDirectory);
    IntakeSummary summary;
    for (const QString& path : paths)
        if (!TakeOne(path, summary)) break;
    main_.SetMainMenusEnabled(true);
    isBusy_ = false;
    if (summary.mods.empty()) return;

    main_.ShowNewMod({summary.mods.back().name});
    main_.ShowOutcome(Describe(summary));
}

bool IntakeCommands::TakeOne(const QString& path, IntakeSummary& summary) {
    ModIntake intake(files_, main_.GetServices().openArchive, LibraryFolder(main_.ProgramDirectory),
                     main_.GameDirectory);
    IntakeFailure failure;
    {
        ShownProgress progress(controls_.progress);
        failure = intake.Unpack(FromQString(path), {}, [&](std::uint64_t done, std::uint64_t total) {
            progress.Set(done, total);
            return !progress.IsStopAsked() && main_.Phase == ProgramPhase::Running;
        });
    }
    if (failure.problem == IntakeProblem::Stopped) return false;
    if (failure) {
        ShowError(window_, WhyNotTaken(failure, path));
        return true;
    }
    const std::size_t before = summary.mods.size();
    for (std::size_t mod = 0; mod < intake.Layout().mods.size(); ++mod)
        PutIntoLibrary(intake, mod, summary);
    const auto& leftOut = intake.Layout().leftOut;
    if (summary.mods.size() > before)
        summary.leftOut.insert(summary.leftOut.end(), leftOut.begin(), leftOut.end());
    return true;
}

void IntakeCommands::PutIntoLibrary(ModIntake& intake, std::size_t mod, IntakeSummary& summary) {
    const NewMod& found = intake.Layout().mods[mod];
    const auto chosen = ChooseModName(window_, intake, found.name);
    if (!chosen) return;
    const PlacedMod placed = intake.Place(mod, chosen->name, chosen->replaces);
    if (placed.error) {
        ShowError(window_, WithPath(QStringLiteral("The mod could not be put into the library."),
                                    "mods\\" + chosen->name, placed.error));
        return;
    }
    summary.mods.push_back({placed.name, found.files, placed.wasInstalled, found.isSorted});
}

} // namespace quillbay
