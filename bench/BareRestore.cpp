#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

/// The least that puts every saved file back in one step and keeps all of them until the last is in place:
/// a link and a rename each, then one rename of the folder, then the removal. No look at what the game has.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("bare_restore BACKUP GAME\n", stderr);
        return 2;
    }
    const fs::path backup = argv[1];
    const fs::path game = argv[2];
    try {
        std::vector<fs::path> saved;
        for (const auto& entry : fs::recursive_directory_iterator(backup))
            if (!entry.is_directory()) saved.push_back(entry.path().lexically_relative(backup));
        for (const fs::path& file : saved) {
            const fs::path target = game / file;
            const fs::path temp = target.parent_path() / "~bare";
            fs::create_hard_link(backup / file, temp);
            fs::rename(temp, target);
        }
        const fs::path remains = backup.parent_path() / "~remains";
        fs::rename(backup, remains);
        for (const fs::path& file : saved)
            fs::remove(remains / file);
        fs::remove_all(remains);
    } catch (const fs::filesystem_error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
