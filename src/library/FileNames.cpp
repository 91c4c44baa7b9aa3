#include "library/FileNames.h"

#include "platform/CaseFold.h"

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

constexpr std::size_t kLongest = 255; ///< bytes

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
    const auto isPort = [stem](std::string_view port) { return StartsFolded(stem, port); };
    return stem.size() > 3 && std::ranges::any_of(kPorts, isPort) &&
           std::ranges::find(kPortNumbers, stem.substr(3)) != kPortNumbers.end();
}

} // namespace

NameFault FindNameFault(std::string_view name) {
    if (std::ranges::any_of(name, IsForbidden)) return NameFault::Character;
    if (name.empty() || name.back() == '.' || name.back() == ' ' || IsDevice(name)) return NameFault::Changed;
    return name.size() > kLongest ? NameFault::TooLong : NameFault::None;
}

} // namespace quillbay
