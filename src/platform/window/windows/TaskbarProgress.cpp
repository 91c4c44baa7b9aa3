#include "platform/window/TaskbarProgress.h"

#include <QWidget>

#include <shobjidl.h>

namespace quillbay {

/// The taskbar's object, if there is one; Qt has entered COM for this thread.
struct TaskbarProgress::Button {
    explicit Button(const QWidget& shown) : window(reinterpret_cast<HWND>(shown.winId())) {
        if (SUCCEEDED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                                       reinterpret_cast<void**>(&list))) &&
            FAILED(list->HrInit())) {
            list->Release();
            list = nullptr;
        }
    }
    ~Button() {
        if (!list) return;
        list->SetProgressState(window, TBPF_NOPROGRESS);
        list->Release();
    }

    HWND window;
    ITaskbarList3* list = nullptr;
};

TaskbarProgress::TaskbarProgress(const QWidget& window) : button_(std::make_unique<Button>(window)) {}

TaskbarProgress::~TaskbarProgress() = default;

void TaskbarProgress::Set(int percent) {
    constexpr ULONGLONG kWhole = 100;
    if (button_->list)
        button_->list->SetProgressValue(button_->window, static_cast<ULONGLONG>(percent), kWhole);
}

} // namespace quillbay
