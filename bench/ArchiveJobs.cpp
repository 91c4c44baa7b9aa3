#include "ArchiveJobs.h"

#include <functional>
#include <string>

namespace fs = std::filesystem;

namespace quillbay {

namespace {

using Command = std::vector<std::string>;

/// `pack` makes the archive before it is first unpacked.
Measurement ArchiveJob(const std::string& what, const std::string& peer, const fs::path& folder,
                       const fs::path& archive, const Command& pack, const Command& unpack) {
    const fs::path mods = folder / "mods";
    const fs::path other = folder / "unpacked";
    const auto begin = [=] {
        if (!fs::exists(archive)) RunProcess(pack);
        for (const fs::path& place : {mods, other}) {
            fs::remove_all(place);
            fs::create_directories(place);
        }
        Settle();
    };
    return {{"taking in " + what + ", whole process", peer, 1.1, "s"},
            [=] {
                begin();
                return RunProcess({JOB_RUNNER, "add", archive, mods});
            },
            [=] {
                begin();
                return RunProcess(unpack);
            }};
}

} // namespace

std::vector<Measurement> ArchiveJobs(const fs::path& game, const fs::path& folder) {
    fs::create_directories(folder);
    const std::string parent = game.parent_path();
    const fs::path zip = folder / "mod.zip";
    const fs::path sevenZip = folder / "mod.7z";
    const std::string other = folder / "unpacked";
    return {
        ArchiveJob(
            "a zip of 6,850 files", "`unzip -q`", folder, zip,
            {"sh", "-c", "cd \"$1\" && exec zip -qr \"$2\" \"$3\"", "sh", parent, zip, game.filename()},
            {"unzip", "-q", zip, "-d", other}),
        ArchiveJob("a 7z of 6,850 files", "`7z x`", folder, sevenZip, {"7z", "a", "-bd", sevenZip, game},
                   {"7z", "x", "-bd", "-o" + other, sevenZip}),
    };
}

} // namespace quillbay
