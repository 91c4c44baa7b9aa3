#pragma once

#include "library/window/IntakeReport.h"

#include <QObject>
#include <QStringList>

class QAction;
class QLabel;
class QMenu;
class QProgressBar;
class QWidget;

namespace quillbay {

class FileSystem;
class LibraryHost;

/// The main window's controls for taking mods into the library.
struct IntakeControls {
    QAction& addItem;
    QLabel& outcome; ///< gets a context menu with the item
    QProgressBar& progress;
};

/// The commands that make mods of archives and folders: those dropped on the main window, and those chosen.
class IntakeCommands : public QObject {
    Q_OBJECT

public:
    /// From now on the main window takes what is dropped on it.
    IntakeCommands(LibraryHost& main, const IntakeControls& controls);

    /// The context menu of an empty list.
    QMenu& MenuForNoMods() { return *menuNoMods_; }
    /// Asks for an archive or a folder.
    void AddModFromFile();
    /// Unpacks each, asks where a name is taken, puts the mods into the library and says what came of it.
    void Take(const QStringList& paths);

protected:
    /// Handles the main window's events about dropping.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeOutcomeMenu();
    bool IsIdle() const;
    /// False when the user has stopped it.
    bool TakeOne(const QString& path, IntakeSummary& summary);
    void PutIntoLibrary(ModIntake& intake, std::size_t mod, IntakeSummary& summary);

    LibraryHost& main_;
    const IntakeControls controls_;
    FileSystem& files_;
    QWidget* window_;
    QMenu* menuNoMods_;
    bool isBusy_ = false;
};

} // namespace quillbay
