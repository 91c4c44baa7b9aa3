#include "library/NewModFolder.h"

#include "library/ModRows.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

constexpr std::string_view kForbidden = "<>:\"/\\|?*";

/// Names of Windows devices, with any extension too.
constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 2> kPorts = {"COM", "LPT"};
constexpr std::array<std::string_view, 12> kPortNumbers = {"1", "2", "3", "4",      "5",      "6",
                                                           "7", "8", "9", "\u00b9", "\u00b2", "\u00b3"};

bool IsForbidden(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == 0x7F || kForbidden.find(c) != std::string_view::npos;
}

bool IsDevice(std::string_view name) {
    const auto base = name.substr(0, name.find('.'));
    const auto stem = base.substr(0, base.find_last_not_of(' ') + 1);
    const auto isStem = [stem](std::string_view device) { return EqualFolded(stem, device); };
    if (std::ranges::any_of(kDevices, isStem)) return true;
    const auto isPort = [stem](std::string_view port) { return EqualFolded(stem.substr(0, 3), port); };
    return stem.size() > 3 && std::ranges::any_of(kPorts, isPort) &&
           std::ranges::find(kPortNumbers, stem.substr(3)) != kPortNumbers.end();
}

/// False for names that Windows keeps differently, and for those that no row of the list can stand for.
bool CanBeKept(std::string_view name) {
    return !name.empty() && name.back() != '.' && name.back() != ' ' && !IsDevice(name) &&
           !IsAddonRow(name) && name != kNoModsRow && !name.starts_with(kLeftoverPrefix);
}

} // namespace

NewFolderOutcome MakeModFolder(FileSystem& files, std::string_view modsFolder, std::string_view name) {
    if (std::ranges::any_of(name, IsForbidden)) return NewFolderOutcome::InvalidCharacter;
    if (!CanBeKept(name)) return NewFolderOutcome::InvalidName;
    const std::string folder = Join(modsFolder, name);
    if (files.Stat(folder)) return NewFolderOutcome::Exists;
    return files.MakeFolder(folder) ? NewFolderOutcome::Failed : NewFolderOutcome::Made;
}

} // namespace quillbay
