#include "DropFile.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>
#include <windows.h>

/// Uses the windows of another program as a person's hands do, with real keys, and waits for what they show.
/// It knows windows by their titles only, so it works on the program that users have.
namespace {

constexpr auto kPatience = std::chrono::minutes(1);
constexpr DWORD kGlanceEveryMs = 20;

HWND FindShownWindow(const std::wstring& title) {
    struct Search {
        const std::wstring& title;
        HWND found = nullptr;
    } search{title};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wchar_t text[512];
            const int length = GetWindowTextW(window, text, 512);
            if (!IsWindowVisible(window) ||
                wanted.title != std::wstring(text, static_cast<std::size_t>(length)))
                return TRUE;
            wanted.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

template <typename Condition>
bool Await(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        Sleep(kGlanceEveryMs);
    }
    return true;
}

bool AwaitWindow(const std::wstring& title) {
    HWND window = nullptr;
    if (!Await([&] { return (window = FindShownWindow(title)) != nullptr; })) return false;
    SetForegroundWindow(window);
    return true;
}

bool AwaitNoWindow(const std::wstring& title) {
    return Await([&] { return FindShownWindow(title) == nullptr; });
}

/// Until the program answers, which a busy one does not, and has painted the window. The window may be
/// another one than a moment ago: an installer that checks itself first shows that under the same title.
bool AwaitAnswer(const std::wstring& title) {
    constexpr UINT kSoonMs = 1000;
    return Await([&] {
        const HWND window = FindShownWindow(title);
        return window && SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kSoonMs, nullptr) &&
               !GetUpdateRect(window, nullptr, FALSE);
    });
}

void SendKey(WORD key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    SendInput(1, &input, sizeof input);
}

/// Keys like `Ctrl+I`, `Alt+F4`, `Enter`.
bool Press(std::wstring keys) {
    struct Named {
        const wchar_t* name;
        WORD key;
    };
    constexpr Named kNamed[] = {{L"Ctrl", VK_CONTROL}, {L"Alt", VK_MENU},  {L"Enter", VK_RETURN},
                                {L"Esc", VK_ESCAPE},   {L"Home", VK_HOME}, {L"Down", VK_DOWN},
                                {L"F4", VK_F4},        {L"Tab", VK_TAB}};
    std::vector<WORD> held;
    keys += L'+';
    for (std::size_t begin = 0, end; (end = keys.find(L'+', begin)) != std::wstring::npos; begin = end + 1) {
        const std::wstring name = keys.substr(begin, end - begin);
        WORD key = name.size() == 1 ? static_cast<WORD>(VkKeyScanW(name[0]) & 0xff) : WORD{0};
        for (const Named& named : kNamed)
            if (name == named.name) key = named.key;
        if (!key) return false;
        held.push_back(key);
    }
    for (const WORD key : held)
        SendKey(key, false);
    for (auto key = held.rbegin(); key != held.rend(); ++key)
        SendKey(*key, true);
    return true;
}

bool Type(const std::wstring& text) {
    for (const wchar_t character : text) {
        const WORD key = static_cast<WORD>(VkKeyScanW(character) & 0xff);
        SendKey(key, false);
        SendKey(key, true);
    }
    return true;
}

/// The window is the one that the user works with, and not minimised.
bool AwaitInFront(const std::wstring& title) {
    return Await([&] {
        const HWND window = FindShownWindow(title);
        return window && GetForegroundWindow() == window && !IsIconic(window);
    });
}

bool Minimize(const std::wstring& title) {
    const HWND window = FindShownWindow(title);
    return window && ShowWindow(window, SW_MINIMIZE);
}

bool Close(const std::wstring& title) {
    const HWND window = FindShownWindow(title);
    return window && PostMessageW(window, WM_CLOSE, 0, 0);
}

struct Command {
    const wchar_t* name;
    bool (*run)(const std::wstring& argument);
};

constexpr Command kCommands[] = {
    {L"await", AwaitWindow},
    {L"gone", AwaitNoWindow},
    {L"idle", AwaitAnswer},
    {L"press", [](const std::wstring& keys) { return Press(keys); }},
    {L"type", Type},
    {L"close", Close},
    {L"front", AwaitInFront},
    {L"minimize", Minimize},
    {L"drop", DropOnWindowInFront},
};

} // namespace

int wmain(int argc, wchar_t** argv) {
    for (int at = 1; at + 1 < argc; at += 2) {
        bool done = false;
        for (const Command& command : kCommands)
            if (std::wstring(argv[at]) == command.name) done = command.run(argv[at + 1]);
        if (!done) {
            std::fprintf(stderr, "hands: cannot %ls \"%ls\"\n", argv[at], argv[at + 1]);
            return 1;
        }
    }
    return 0;
}
