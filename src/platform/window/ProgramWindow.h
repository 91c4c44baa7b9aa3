#pragma once

class QWidget;

/// What the desktop knows of the program as a whole.
namespace quillbay {

/// Before the first window: on Windows the program gets an identity of its own, by which the taskbar puts its
/// windows together, and the system covers none of them with a pale picture while a job lets it wait. On
/// POSIX the desktop finds the program by the name of its desktop entry, and what a job needed for long lists
/// goes back to the system.
void PrepareProgram();

/// Lets another process find the window, which is the program's main one.
void MarkMainWindow(QWidget& window);

/// Brings the main window of the instance that runs already to the front, restored when it was minimised.
/// False when none was found; on POSIX there is none to be found.
bool RaiseMainWindow();

/// From now on title bars are dark while the windows are. Elsewhere than on Windows the desktop sees to that.
void LetTitleBarsFollowPalette();

} // namespace quillbay
