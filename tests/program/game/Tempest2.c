/* Stands in for the game: leaves its command line and its current folder, each in UTF-8 on a line, in the
   file `mark` beside it. */
#include <stdio.h>
#include <windows.h>

int wmain(void) {
    wchar_t folder[MAX_PATH], mark[MAX_PATH + 8];
    char line[2][4 * MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, folder);
    GetModuleFileNameW(NULL, mark, MAX_PATH);
    wcscpy(wcsrchr(mark, L'\\'), L"\\mark");
    WideCharToMultiByte(CP_UTF8, 0, GetCommandLineW(), -1, line[0], sizeof line[0], NULL, NULL);
    WideCharToMultiByte(CP_UTF8, 0, folder, -1, line[1], sizeof line[1], NULL, NULL);
    FILE* file = _wfopen(mark, L"wb");
    fprintf(file, "%s\n%s\n", line[0], line[1]);
    return fclose(file);
}
