/* The least work on files that installing and uninstalling can be done with, by the same guarantees as the program's:
   every replaced file has a second name before the first one changes, one rename begins and one ends the installed
   state, a new file gets its name when it is whole, and an old one comes back in one step.
   least_file_work install|uninstall GAME MOD, flat folders; the game's files are replaced by the mod's of the same names. */
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>
#include <windows.h>
#include <winternl.h>

struct NewName {
    ULONG flags;
    HANDLE root;
    ULONG bytes;
    WCHAR name[MAX_PATH];
};

static wchar_t (*names)[64];
static int count;

static const wchar_t *In(const wchar_t *folder, const wchar_t *name) {
    static wchar_t paths[4][MAX_PATH];
    static int next;
    wchar_t *path = paths[next++ & 3];
    _snwprintf(path, MAX_PATH, L"%ls\\%ls", folder, name);
    return path;
}

static void Fail(const wchar_t *what) {
    fwprintf(stderr, L"%ls: error %lu\n", what, GetLastError());
    exit(1);
}

static void List(const wchar_t *folder) {
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW(In(folder, L"*"), &entry);
    if (search == INVALID_HANDLE_VALUE) Fail(folder);
    do {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        if (count % 1024 == 0) names = realloc(names, (count + 1024) * sizeof *names);
        wcsncpy(names[count++], entry.cFileName, 63);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
}

static void Install(const wchar_t *game, const wchar_t *mod) {
    const wchar_t *stage = In(mod, L"~stage");
    wchar_t kept[MAX_PATH];
    wcscpy(kept, stage);
    if (!CreateDirectoryW(kept, NULL)) Fail(kept);
    for (int i = 0; i < count; i++)
        if (!CreateHardLinkW(In(kept, names[i]), In(game, names[i]), NULL)) Fail(names[i]);
    if (!MoveFileExW(kept, In(mod, L"Backup"), 0)) Fail(L"Backup");
    for (int i = 0; i < count; i++) {
        const wchar_t *temp = In(game, L"~new");
        if (!CopyFileExW(In(mod, names[i]), temp, NULL, NULL, NULL, COPY_FILE_FAIL_IF_EXISTS) ||
            !MoveFileExW(temp, In(game, names[i]), MOVEFILE_REPLACE_EXISTING))
            Fail(names[i]);
    }
}

static void PutBack(const wchar_t *saved, const wchar_t *file) {
    struct NewName to = {1, NULL, 0, {0}};
    IO_STATUS_BLOCK status;
    HANDLE handle = CreateFileW(saved, FILE_WRITE_ATTRIBUTES | SYNCHRONIZE, 7, NULL, OPEN_EXISTING, 0, NULL);
    to.bytes = 2 * (ULONG)_snwprintf(to.name, MAX_PATH, L"\\??\\%ls", file);
    if (NtSetInformationFile(handle, &status, &to, sizeof to, FileLinkInformation) < 0) Fail(file);
    CloseHandle(handle);
}

static void Uninstall(const wchar_t *game, const wchar_t *mod) {
    wchar_t backup[MAX_PATH];
    wcscpy(backup, In(mod, L"Backup"));
    for (int i = 0; i < count; i++)
        PutBack(In(backup, names[i]), In(game, names[i]));
    wchar_t stage[MAX_PATH];
    wcscpy(stage, In(mod, L"~stage"));
    if (!MoveFileExW(backup, stage, 0)) Fail(backup);
    for (int i = 0; i < count; i++)
        if (!DeleteFileW(In(stage, names[i]))) Fail(names[i]);
    if (!RemoveDirectoryW(stage)) Fail(stage);
}

int wmain(int argc, wchar_t **argv) {
    if (argc == 1) return 0; /* what the start of a program costs */
    if (argc != 4) return 2;
    List(argv[3]);
    (wcscmp(argv[1], L"install") == 0 ? Install : Uninstall)(argv[2], argv[3]);
    return 0;
}
