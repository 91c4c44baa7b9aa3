#pragma once

class QAction;

namespace quillbay {

class LibraryHost;

/// Asks the user, then writes `FileList.txt` anew, says what was done, and lets the finder be opened.
void RecompileFromMenu(LibraryHost& main, QAction& openFinder);

} // namespace quillbay
