#include "platform/window/ProgramWindow.h"

#include <QGuiApplication>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quillbay {

void PrepareProgram() {
#ifdef __GLIBC__
    // By itself glibc raises this bound (bytes) with every list of a job that is freed, and keeps the later
    // ones.
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
    QGuiApplication::setDesktopFileName(QStringLiteral("quillbay"));
}

void MarkMainWindow(QWidget&) {}

bool RaiseMainWindow() { return false; }

void LetTitleBarsFollowPalette() {}

} // namespace quillbay
