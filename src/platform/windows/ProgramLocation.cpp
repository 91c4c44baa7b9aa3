#include "platform/ProgramLocation.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"
#include "platform/RealPath.h"
#include "platform/windows/ProgramFile.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"

#include <shlobj.h>

namespace quillbay {

namespace {

/// A folder of the system, links resolved; empty where it has none.
std::string KnownFolder(const KNOWNFOLDERID& id) {
    wchar_t* path = nullptr;
    std::string folder;
    if (SUCCEEDED(SHGetKnownFolderPath(id, 0, nullptr, &path))) folder = NarrowText(path);
    CoTaskMemFree(path);
    return folder;
}

std::string TemporaryFolder() {
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    return length > MAX_PATH ? std::string() : NarrowText(std::wstring_view(path, length));
}

bool IsInside(std::string_view folder, const std::string& outer) {
    if (outer.empty()) return false;
    std::string root = FindRealPath(outer).ValueOr(outer);
    if (root.back() != '\\') root += '\\';
    return folder.size() >= root.size() && EqualFolded(folder.substr(0, root.size()), root);
}

} // namespace

ProgramPlaces FindProgramPlaces() {
    ProgramPlaces places;
    const std::string file = NarrowText(FindProgramFile());
    const std::string real = FindRealPath(file).ValueOr(file);
    places.executable = Parent(real);
    if (const auto data = KnownFolder(FOLDERID_LocalAppData); !data.empty())
        places.user = Join(data, "Quillbay");
    for (const KNOWNFOLDERID& id :
         {FOLDERID_ProgramFiles, FOLDERID_ProgramFilesX86, FOLDERID_ProgramFilesX64, FOLDERID_Windows})
        places.isForPrograms = places.isForPrograms || IsInside(real, KnownFolder(id));
    places.isEmptiedBySystem = IsInside(real, TemporaryFolder());
    return places;
}

std::string MakeProgramDirectory(const ProgramPlaces& places) {
    const std::string folder = ChooseProgramFolder(places, IsWritableFolder);
    if (const auto path = LongPath(folder); path && folder == places.user)
        CreateDirectoryW(path->c_str(), nullptr); // %LOCALAPPDATA% itself is always there
    return folder;
}

} // namespace quillbay
