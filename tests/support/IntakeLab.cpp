#include "support/IntakeLab.h"

#include <filesystem>
#include <set>

namespace quillbay::test {

IntakeLab::Taken IntakeLab::Take(FileSystem& files, const std::string& name, const IntakeLimits& limits,
                                 const IntakeProgress& progress) {
    ModIntake intake(files, OpenArchive, Mods(), temp_ / "game");
    Taken taken;
    taken.failure = intake.Unpack(outside_ / name, limits, progress);
    const ModLayout& layout = intake.Layout();
    taken.leftOut = layout.leftOut;
    for (std::size_t i = 0; i < layout.mods.size() && !taken.failure; ++i) {
        taken.isSorted = layout.mods[i].isSorted;
        const std::string& mod = layout.mods[i].name;
        const ModPlace place = intake.FindPlace(mod);
        if (place == ModPlace::Free || place == ModPlace::Replaceable)
            taken.placed.push_back(intake.Place(i, mod, place == ModPlace::Replaceable));
    }
    return taken;
}

std::string IntakeLab::Files() const {
    namespace fs = std::filesystem;
    const fs::path root = DiskPath(temp_.Path());
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto u8 = entry.path().lexically_relative(root).generic_u8string();
        const std::string name(u8.begin(), u8.end());
        if (entry.is_regular_file())
            found.insert((name.starts_with("mods/") ? name.substr(5) : "!" + name) + '=' +
                         FileBytes(temp_ / name));
        else if (!entry.is_directory() || entry.path().filename().string().starts_with('~'))
            found.insert("!" + name);
    }
    std::string files;
    for (const auto& text : found)
        files += (files.empty() ? "" : " ") + text;
    return files;
}

} // namespace quillbay::test
