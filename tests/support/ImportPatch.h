#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <tuple>
#include <windows.h>
#include <winternl.h>

namespace quillbay::test {

/// While it lives, a module's calls of an imported function go to another one; without such an import it does
/// nothing. A null module is the program.
class ImportPatch {
public:
    template <typename Function>
    ImportPatch(const char* module, std::string_view function, Function* replacement)
        : base_(reinterpret_cast<std::byte*>(GetModuleHandleA(module))) {
        const auto& dos = At<IMAGE_DOS_HEADER>(0);
        const auto& directories = At<IMAGE_NT_HEADERS>(dos.e_lfanew).OptionalHeader.DataDirectory;
        constexpr auto kNameOffset = offsetof(IMAGE_IMPORT_BY_NAME, Name);
        const auto* from =
            &At<IMAGE_IMPORT_DESCRIPTOR>(directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
        for (; from->Name != 0; ++from) {
            auto* slot = &At<ULONG_PTR>(from->FirstThunk);
            for (auto* name = &At<ULONG_PTR>(from->OriginalFirstThunk); *name != 0; ++name, ++slot)
                if (!IMAGE_SNAP_BY_ORDINAL(*name) && function == &At<char>(*name + kNameOffset)) slot_ = slot;
        }
        if (!slot_) return;
        original_ = *slot_;
        Write(reinterpret_cast<ULONG_PTR>(replacement));
    }
    ImportPatch(const ImportPatch&) = delete;
    ~ImportPatch() {
        if (slot_) Write(original_);
    }

    explicit operator bool() const { return slot_ != nullptr; }

private:
    template <typename T, typename Offset>
    T& At(Offset offset) const {
        return *reinterpret_cast<T*>(base_ + offset);
    }
    void Write(ULONG_PTR value) {
        DWORD old = 0;
        VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &old);
        *slot_ = value;
        VirtualProtect(slot_, sizeof *slot_, old, &old);
    }

    std::byte* base_;
    ULONG_PTR* slot_ = nullptr;
    ULONG_PTR original_ = 0;
};

/// Counts, while it lives, how often a path goes to the native system to be looked up.
class LookUpCounter {
public:
    LookUpCounter() {
        count_ = 0;
        Watch<0>("NtCreateFile", &NtCreateFile);
        Watch<1>("NtOpenFile", &NtOpenFile);
        using Query = NTSTATUS NTAPI(OBJECT_ATTRIBUTES*, void*);
        Watch<2>("NtQueryAttributesFile", static_cast<Query*>(nullptr));
        Watch<3>("NtQueryFullAttributesFile", static_cast<Query*>(nullptr));
        Watch<kNaming>("NtSetInformationFile", &NtSetInformationFile);
    }

    int Count() const { return count_; }

private:
    static constexpr int kNaming = 4;

    template <int Id, typename... T>
    struct Counted {
        static inline NTSTATUS(NTAPI* original)(T...);
        static NTSTATUS NTAPI Call(T... arguments) {
            bool isLookUp = true;
            if constexpr (Id == kNaming) {
                // A new name, of a file or of a link to it, is looked up, too.
                const int kind = std::get<4>(std::tuple(arguments...));
                isLookUp = kind == 10 || kind == 11 || kind == 65 || kind == 72;
            }
            count_ += isLookUp;
            return original(arguments...);
        }
    };
    template <int Id, typename... T>
    void Watch(const char* name, NTSTATUS(NTAPI*)(T...)) {
        using Counter = Counted<Id, T...>;
        Counter::original = reinterpret_cast<NTSTATUS(NTAPI*)(T...)>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll"), name)));
        for (const char* module : {static_cast<const char*>(nullptr), "kernel32", "kernelbase"})
            patches_.emplace_back(module, name, &Counter::Call);
    }

    static inline int count_ = 0;
    std::deque<ImportPatch> patches_;
};

} // namespace quillbay::test
