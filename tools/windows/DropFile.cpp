#include "DropFile.h"

#include <atomic>
#include <ole2.h>
#include <shlobj.h>
#include <thread>

namespace {

/// Holds the button down until the mouse has moved over the window a few times, then lets go.
class Hand : public IDropSource {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool isKnown = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDropSource);
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; } // it lives as long as the drag
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL isEscape, DWORD) override {
        constexpr int kMovesBeforeDrop = 5;
        if (isEscape) return DRAGDROP_S_CANCEL;
        return ++asked_ > kMovesBeforeDrop ? DRAGDROP_S_DROP : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    int asked_ = 0;
};

/// The file as the file manager would give it.
IDataObject* FileData(const std::wstring& file) {
    PIDLIST_ABSOLUTE item = ILCreateFromPathW(file.c_str());
    if (!item) return nullptr;
    IShellFolder* folder = nullptr;
    PCUITEMID_CHILD name = nullptr;
    IDataObject* data = nullptr;
    if (SUCCEEDED(SHBindToParent(item, IID_IShellFolder, reinterpret_cast<void**>(&folder), &name))) {
        folder->GetUIObjectOf(nullptr, 1, &name, IID_IDataObject, nullptr, reinterpret_cast<void**>(&data));
        folder->Release();
    }
    ILFree(item);
    return data;
}

void MoveMouse(int by) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = by;
    input.mi.dwFlags = MOUSEEVENTF_MOVE;
    SendInput(1, &input, sizeof input);
}

} // namespace

bool DropOnWindowInFront(const std::wstring& file) {
    RECT place{};
    if (!GetWindowRect(GetForegroundWindow(), &place)) return false;
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    if (FAILED(OleInitialize(nullptr))) return false;
    IDataObject* data = FileData(file);
    std::atomic<bool> isOver = false;
    // A drag goes on at each message of the mouse.
    std::thread mouse([&] {
        constexpr DWORD kEveryMs = 50;
        for (int by = 1; !isOver; by = -by) {
            Sleep(kEveryMs);
            MoveMouse(by);
        }
    });
    Hand hand;
    DWORD effect = DROPEFFECT_NONE;
    const bool isDropped = data && DoDragDrop(data, &hand, DROPEFFECT_COPY, &effect) == DRAGDROP_S_DROP &&
                           effect == DROPEFFECT_COPY;
    isOver = true;
    mouse.join();
    if (data) data->Release();
    OleUninitialize();
    return isDropped;
}
