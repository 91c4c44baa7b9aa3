#include "library/window/IntakeCommands.h"

#include "common/window/FolderOrFileDialog.h"
#include "common/window/OnlyEscape.h"
#include "common/window/PaintClock.h"
#include "common/window/QtText.h"
#include "common/window/ShowMessage.h"
#include "common/window/ShownProgress.h"
#include "library/ModRows.h"
#include "library/window/LibraryHost.h"

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
#include <optional>

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

/// A name for a mod, and whether it replaces the one that has it.
struct ChosenName {
    std::string name;
    bool replaces = false;
};

/// Asks until the name is good or the user gives up.
class NameQuestion {
public:
    NameQuestion(QWidget* window, const ModIntake& intake) : window_(window), intake_(intake) {}

    std::optional<ChosenName> Ask(std::string name) {
        for (bool isTyped = false;; isTyped = true) {
            switch (intake_.FindPlace(name)) {
            case ModPlace::Free:
                return ChosenName{name, false};
            case ModPlace::Replaceable:
            case ModPlace::Taken:
                switch (AskAboutTaken(name)) {
                case Answer::Replace:
                    return ChosenName{name, true};
                case Answer::Cancel:
                    return std::nullopt;
                case Answer::AnotherName:
                    break;
                }
                break;
            case ModPlace::InvalidName:
                if (isTyped) ShowMessage(window_, QStringLiteral("Invalid name."));
                break;
            case ModPlace::InvalidCharacter:
                if (isTyped)
                    ShowError(window_,
                              QStringLiteral("An error has occurred. It is possible that you have entered "
                                             "invalid characters. Please enter a different name."));
                break;
            }
            const auto typed = AskText(window_, QStringLiteral("Please enter the name of the folder."),
                                       QStringLiteral("Make new folder"));
            if (!typed || typed->isEmpty()) return std::nullopt;
            name = FromQString(*typed);
        }
    }

private:
    enum class Answer { Replace, AnotherName, Cancel };

    Answer AskAboutTaken(const std::string& name) {
        const QString text = QStringLiteral("mods\\") + ToQString(name) + QStringLiteral(" exists already.");
        QStringList captions{QStringLiteral("Another name"), QStringLiteral("Cancel")};
        const bool mayReplace = intake_.FindPlace(name) == ModPlace::Replaceable;
        if (mayReplace) captions.prepend(QStringLiteral("Replace it"));
        const int pressed = AskChoice(window_, text, captions) + (mayReplace ? 0 : 1);
        return pressed == 0 ? Answer::Replace : pressed == 1 ? Answer::AnotherName : Answer::Cancel;
    }

    QWidget* window_;
    const ModIntake& intake_;
};

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
    if (isTaken) drop.setDropAction(Qt::CopyAction); // after a move the giver would delete its file
    drop.setAccepted(isTaken);
    // The giver waits for the end of this event.
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
    PrepareModsFolder(files_, main_.ProgramDirectory);
    IntakeSummary summary;
    for (const QString& path : paths)
        if (!TakeOne(path, summary)) break;
    main_.SetMainMenusEnabled(true);
    isBusy_ = false;
    if (summary.mods.empty()) return;

    const auto before = main_.SelectedMod();
    const ModPath taken{summary.mods.back().name};
    main_.RefreshModList(
        {.hideProgress = true, .keepControls = true, .skipCount = true, .keepDetails = true});
    main_.SelectMod(taken);
    // Another row's selection shows its details by itself.
    if (before && before->path == taken) main_.ShowModDetails();
    main_.ShowOutcome(Describe(summary));
}

bool IntakeCommands::TakeOne(const QString& path, IntakeSummary& summary) {
    ModIntake intake(files_, main_.GetServices().openArchive, ModsFolder(main_.ProgramDirectory),
                     main_.GameDirectory);
    IntakeFailure failure;
    {
        const OnlyEscape escape;
        ShownProgress progress(controls_.progress);
        PaintClock clock;
        failure = intake.Unpack(FromQString(path), {}, [&](std::uint64_t done, std::uint64_t total) {
            progress.Set(done, total);
            if (clock.Due()) QCoreApplication::processEvents();
            return !escape.IsStopped() && main_.Phase == ProgramPhase::Running;
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
    NameQuestion question(window_, intake);
    const auto chosen = question.Ask(found.name);
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
