#include "platform/archive/PartOfSet.h"

#include "platform/CaseFold.h"
#include "platform/NumberText.h"
#include "platform/archive/ZipEnd.h"

#include <algorithm>
#include <string>

namespace quillbay {

namespace {

/// `part2` of `name.part2.rar`.
bool IsPartNumber(std::string_view text) {
    constexpr std::string_view kPart = "part";
    return StartsFolded(text, kPart) && IsDigits(text.substr(kPart.size()));
}

} // namespace

bool LooksLikePart(std::string_view fileName, std::string_view tail) {
    const auto end = FindZipEnd(tail);
    if (end && end->IsOfSet()) return true;

    const auto dot = std::min(fileName.rfind('.'), fileName.size());
    const std::string ending = FoldCase(fileName.substr(dot));
    if (ending == ".RAR") {
        const auto name = fileName.substr(0, dot);
        return IsPartNumber(name.substr(name.rfind('.') + 1));
    }
    if (ending.size() != 4) return false;
    const bool isLettered = ending[1] == 'R' || ending[1] == 'Z';         // .r00, .z01
    return IsDigits(std::string_view(ending).substr(isLettered ? 2 : 1)); // .7z.001
}

} // namespace quillbay
