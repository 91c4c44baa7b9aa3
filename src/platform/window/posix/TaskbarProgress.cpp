#include "platform/window/TaskbarProgress.h"

namespace quillbay {

struct TaskbarProgress::Button {};

TaskbarProgress::TaskbarProgress(const QWidget&) {}
TaskbarProgress::~TaskbarProgress() = default;
void TaskbarProgress::Set(int) {}

} // namespace quillbay
