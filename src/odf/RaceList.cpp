#include "odf/RaceList.h"

#include "odf/OdfFile.h"
#include "odf/OdfLines.h"
#include "platform/PathText.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace quillbay {

namespace {

constexpr std::string_view kRacesFile = "races.odf";

std::string OtherFolder(std::string_view odfFolder) { return Join(odfFolder, kOdfFolders.front()); }

/// The files that the `race` lines name; none without a readable races file.
std::optional<std::vector<std::string>> ReadRaceReferences(const FileSystem& files,
                                                           const std::string& folder) {
    const auto text = ReadOdfText(files, Join(folder, kRacesFile));
    if (!text) return std::nullopt;
    std::vector<std::string> names;
    ForEachLine(*text, [&](std::string_view line) {
        if (const auto name = RaceFileReference(line)) names.emplace_back(*name);
    });
    return names;
}

bool StaysInFolder(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("\\/:") == std::string_view::npos;
}

/// The last name in a race file, which may be empty; none when the file cannot be read.
std::optional<std::string> ReadRaceName(const FileSystem& files, const std::string& folder,
                                        const std::string& name) {
    if (!StaysInFolder(name)) return std::nullopt;
    const auto text = ReadOdfText(files, Join(folder, name));
    if (!text) return std::nullopt;
    std::string race;
    ForEachLine(*text, [&](std::string_view line) {
        if (const auto found = RaceName(line)) race = *found;
    });
    return race;
}

} // namespace

std::vector<std::string> BuildRaceList(const FileSystem& files, std::string_view odfFolder) {
    const std::string folder = OtherFolder(odfFolder);
    std::vector<std::string> races(1);
    const auto references = ReadRaceReferences(files, folder);
    if (!references) return races;
    std::map<std::string_view, std::string> known; // a races file may name one file any number of times
    for (const std::string& name : *references) {
        const auto [at, isNew] = known.try_emplace(name);
        if (isNew) at->second = ReadRaceName(files, folder, name).value_or(std::string());
        races.push_back(at->second);
    }
    return races;
}

bool ProbeRaceFiles(const FileSystem& files, std::string_view odfFolder) {
    const std::string folder = OtherFolder(odfFolder);
    const auto references = ReadRaceReferences(files, folder);
    if (!references) return false;
    const std::set<std::string> names(references->begin(), references->end());
    return std::ranges::all_of(
        names, [&](const std::string& name) { return ReadRaceName(files, folder, name).has_value(); });
}

} // namespace quillbay
