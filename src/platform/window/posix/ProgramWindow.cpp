#include "platform/window/ProgramWindow.h"

#include <QGuiApplication>

namespace quillbay {

void PrepareProgram() { QGuiApplication::setDesktopFileName(QStringLiteral("quillbay")); }

void MarkMainWindow(QWidget&) {}

bool RaiseMainWindow() { return false; }

void LetTitleBarsFollowPalette() {}

} // namespace quillbay
