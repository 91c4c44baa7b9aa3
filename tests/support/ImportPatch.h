#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>
#include <windows.h>
#include <winternl.h>

namespace quillbay::test {

/// While it lives, a module's calls of an imported function go to another one; without such an import it does
/// nothing. A null module is the program.
class ImportPatch {
public:
    ImportPatch(const char* module, const char* function, void* replacement) {
        auto* base = reinterpret_cast<std::byte*>(GetModuleHandleA(module));
        const auto at = [base]<typename T>(T*, std::size_t offset) {
            return reinterpret_cast<T*>(base + offset);
        };
        const auto* dos = at(static_cast<IMAGE_DOS_HEADER*>(nullptr), 0);
        const auto* header =
            at(static_cast<IMAGE_NT_HEADERS*>(nullptr), static_cast<std::size_t>(dos->e_lfanew));
        const auto imports =
            header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (auto* from = at(static_cast<IMAGE_IMPORT_DESCRIPTOR*>(nullptr), imports); from->Name != 0;
             ++from) {
            auto* name = at(static_cast<IMAGE_THUNK_DATA*>(nullptr), from->OriginalFirstThunk);
            auto* slot = at(static_cast<IMAGE_THUNK_DATA*>(nullptr), from->FirstThunk);
            for (; name->u1.AddressOfData != 0; ++name, ++slot) {
                if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
                const auto* known = at(static_cast<IMAGE_IMPORT_BY_NAME*>(nullptr), name->u1.AddressOfData);
                if (std::strcmp(reinterpret_cast<const char*>(known->Name), function) != 0) continue;
                slot_ = &slot->u1.Function;
                original_ = *slot_;
                Write(reinterpret_cast<ULONG_PTR>(replacement));
                return;
            }
        }
    }
    ImportPatch(const ImportPatch&) = delete;
    ~ImportPatch() {
        if (slot_) Write(original_);
    }

    explicit operator bool() const { return slot_ != nullptr; }

private:
    void Write(ULONG_PTR value) {
        DWORD old = 0;
        VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &old);
        *slot_ = value;
        VirtualProtect(slot_, sizeof *slot_, old, &old);
    }

    ULONG_PTR* slot_ = nullptr;
    ULONG_PTR original_ = 0;
};

/// Counts, while it lives, how often a path goes to the native system to be looked up.
class LookUpCounter {
public:
    LookUpCounter() {
        count_ = 0;
        for (const char* module : std::array<const char*, 3>{nullptr, "kernel32", "kernelbase"}) {
            Watch(module, "NtCreateFile", &Create);
            Watch(module, "NtOpenFile", &Open);
            Watch(module, "NtQueryAttributesFile", &Query);
            Watch(module, "NtQueryFullAttributesFile", &QueryFull);
            Watch(module, "NtSetInformationFile", &SetInformation);
        }
    }

    int Count() const { return count_; }

private:
    template <typename... T>
    using Call = NTSTATUS(NTAPI*)(T...);
    using Path = OBJECT_ATTRIBUTES*;
    using Status = IO_STATUS_BLOCK*;

    template <typename F>
    void Watch(const char* module, const char* name, F* replacement) {
        patches_.push_back(std::make_unique<ImportPatch>(module, name, reinterpret_cast<void*>(replacement)));
    }
    template <typename... T>
    static NTSTATUS Forward(const char* name, T... arguments) {
        const auto original = GetProcAddress(GetModuleHandleA("ntdll"), name);
        return reinterpret_cast<Call<T...>>(reinterpret_cast<void*>(original))(arguments...);
    }

    static NTSTATUS NTAPI Create(HANDLE* file, ACCESS_MASK access, Path path, Status status,
                                 LARGE_INTEGER* size, ULONG attributes, ULONG share, ULONG how, ULONG options,
                                 void* more, ULONG bytes) {
        ++count_;
        return Forward("NtCreateFile", file, access, path, status, size, attributes, share, how, options,
                       more, bytes);
    }
    static NTSTATUS NTAPI Open(HANDLE* file, ACCESS_MASK access, Path path, Status status, ULONG share,
                               ULONG options) {
        ++count_;
        return Forward("NtOpenFile", file, access, path, status, share, options);
    }
    static NTSTATUS NTAPI Query(Path path, void* information) {
        ++count_;
        return Forward("NtQueryAttributesFile", path, information);
    }
    static NTSTATUS NTAPI QueryFull(Path path, void* information) {
        ++count_;
        return Forward("NtQueryFullAttributesFile", path, information);
    }
    /// A new name, of a file or of a link to it, is looked up, too.
    static NTSTATUS NTAPI SetInformation(HANDLE file, Status status, void* information, ULONG bytes,
                                         ULONG kind) {
        if (kind == 10 || kind == 11 || kind == 65 || kind == 72) ++count_;
        return Forward("NtSetInformationFile", file, status, information, bytes, kind);
    }

    static inline int count_ = 0;
    std::vector<std::unique_ptr<ImportPatch>> patches_;
};

} // namespace quillbay::test
