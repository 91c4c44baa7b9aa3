#include "sample/Sample.h"

#include "library/GameFolders.h"
#include "sample/Contents.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay::sample {

namespace fs = std::filesystem;

namespace {

/// How many files a known folder holds in proportion to others, how large they are, and what they are.
struct FolderKind {
    std::string_view prefix;
    unsigned weight;
    unsigned smallest; ///< bytes
    unsigned largest;
    std::string_view extension;
};

/// The first prefix that fits counts.
constexpr std::array<FolderKind, 9> kFolderKinds = {{
    {"odf\\", 25, 400, 6'000, ".odf"},
    {"Textures\\", 50, 4'000, 70'000, ".bmp"},
    {"sounds\\", 15, 10'000, 160'000, ".wav"},
    {"Sod\\", 45, 8'000, 90'000, ".sod"},
    {"bitmaps\\", 3, 2'000, 60'000, ".bmp"},
    {"missions\\", 4, 20'000, 200'000, ".bzn"},
    {"Ai\\", 6, 300, 8'000, ".aip"},
    {"save\\", 1, 5'000, 60'000, ".sav"},
    {"", 2, 200, 20'000, ".dat"},
}};

constexpr std::array<std::string_view, 16> kWords = {
    "amber", "beacon", "comet",   "drift", "ember",  "falcon", "garnet", "harbor",
    "ion",   "jasper", "kestrel", "lumen", "meadow", "nimbus", "orchid", "pylon",
};

const FolderKind& KindOf(std::string_view folder) {
    return *std::find_if(kFolderKinds.begin(), kFolderKinds.end(),
                         [folder](const FolderKind& kind) { return folder.starts_with(kind.prefix); });
}

fs::path Native(std::string_view folder) {
    std::string path(folder);
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

/// Old, and different from file to file, so that a time that was not given back shows.
fs::file_time_type TimeFor(std::uint64_t seed) {
    const auto day = std::chrono::sys_days{std::chrono::year{2003} / 5 / 17};
    return fs::file_time_type::clock::from_sys(day + std::chrono::seconds{seed % 90'000'000});
}

void Write(const fs::path& file, std::string_view bytes, std::uint64_t seed) {
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write " + file.string());
    }
    fs::last_write_time(file, TimeFor(seed));
}

std::string FileName(std::size_t number, std::string_view extension) {
    return std::string(kWords[number % kWords.size()]) + "_" + std::to_string(number / kWords.size()) +
           std::string(extension);
}

struct PlannedFile {
    fs::path path;
    std::string name;
    double size;
};

std::vector<PlannedFile> PlanGame(std::size_t files) {
    double weights = 0;
    for (const auto folder : GameFolders) {
        weights += KindOf(folder).weight;
    }
    Dice dice(files);
    std::vector<PlannedFile> plan;
    double due = 0;
    for (const auto folder : GameFolders) {
        const FolderKind& kind = KindOf(folder);
        due += static_cast<double>(files) * kind.weight / weights;
        for (std::size_t number = 0; static_cast<double>(plan.size()) + 0.5 < due; ++number) {
            const std::string name = FileName(number, kind.extension);
            // The square makes small files common and large ones rare.
            const double share = static_cast<double>(dice.Between(0, 1000)) / 1000;
            plan.push_back({Native(folder) / name, name,
                            kind.smallest + share * share * (kind.largest - kind.smallest)});
        }
    }
    return plan;
}

std::string ModInfoText(std::string_view author, std::string_view description, std::string_view version) {
    std::string text;
    text.append("Author: ").append(author).append("\r\n\r\n");
    text.append("Description: ").append(description).append("\r\n\r\n");
    text.append("Version: ").append(version).append("\r\n\r\n");
    text.append("Other Heading: Thanks to:\r\n\r\nOther: everyone who tried it out\r\n");
    return text;
}

/// Files `first` to `last` of the made names in one folder, with contents of their own.
void WriteSome(const fs::path& root, std::string_view folder, std::size_t first, std::size_t last,
               std::uint64_t seed) {
    const FolderKind& kind = KindOf(folder);
    for (std::size_t number = first; number <= last; ++number) {
        const std::string name = FileName(number, kind.extension);
        Dice dice(seed + number);
        Write(root / Native(folder) / name,
              ContentsFor(name, dice.Between(kind.smallest, kind.largest / 4), dice.Next()), dice.Next());
    }
}

} // namespace

void MakeGame(const fs::path& game, std::size_t files, std::uint64_t bytes) {
    for (const auto folder : GameFolders) {
        fs::create_directories(game / Native(folder));
    }
    const auto plan = PlanGame(files);
    double total = 0;
    for (const auto& file : plan) {
        total += file.size;
    }
    const double scale = static_cast<double>(bytes) / total;
    Dice dice(bytes);
    for (const auto& file : plan) {
        const auto size = static_cast<std::size_t>(std::max(16.0, file.size * scale));
        Write(game / file.path, ContentsFor(file.name, size, dice.Next()), dice.Next());
    }
    Write(game / "Tempest2.exe", Noise(4096, 2), 2);
}

void MakeReplacingMod(const fs::path& game, const fs::path& mod) {
    Dice dice(7);
    for (const auto& entry : fs::recursive_directory_iterator(game)) {
        if (entry.is_regular_file()) {
            const std::string name = entry.path().filename();
            Write(mod / fs::relative(entry.path(), game),
                  ContentsFor(name, static_cast<std::size_t>(entry.file_size()), dice.Next()), dice.Next());
        }
    }
}

void MakeDefinitions(const fs::path& folder, std::size_t count, bool spread) {
    constexpr std::array<std::string_view, 9> kFolders = {
        "other",   "commands",        "special_weapons", "ships",        "stations",
        "weapons", "weapons/phasers", "weapons/photons", "weapons/pulse"};
    for (std::size_t number = 0; number < count; ++number) {
        const std::string name = FileName(number, ".odf");
        const fs::path file = spread ? folder / kFolders[number % kFolders.size()] / name : folder / name;
        Dice dice(number);
        std::string text = "#include \"" + FileName((number + 9) % count, ".odf") + "\"\r\n";
        text += "tooltip = \"" + name + "\"\r\nweapon1 = \"" + FileName(number / 2, "") + "\"\r\n";
        Write(file, text + OdfText(name, dice.Between(400, 6'000), number), number);
    }
}

void MakeLooseFiles(const fs::path& folder, std::size_t count, std::size_t definitions) {
    constexpr std::array<std::string_view, 5> kExtensions = {".tga", ".sod", ".bzn", ".spr", ".txt"};
    MakeDefinitions(folder, definitions, false);
    for (std::size_t number = definitions; number < count; ++number) {
        Write(folder / FileName(number, kExtensions[number % kExtensions.size()]), Noise(64, number), number);
    }
}

void MakeLibrary(const fs::path& modLibrary, std::size_t mods, std::size_t addons) {
    for (std::size_t number = 0; number < mods; ++number) {
        const fs::path mod = modLibrary / FileName(number, " mod");
        WriteSome(mod, "odf\\ships\\", number, number + 1, number);
        if (number < addons) {
            WriteSome(mod / "Addon" / FileName(number, " extra"), "odf\\weapons\\", number, number, number);
        }
    }
}

namespace {

constexpr std::string_view kRegistryHead =
    "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n";
constexpr std::string_view kGameKey =
    "[Software\\\\Wow6432Node\\\\Brightgate\\\\Tempest II\\\\v1.0] 1052000000\n#time=1c31c7e2d3b4a00\n"
    "\"INSTALLPATH\"=\"C:\\\\Program Files\\\\Brightgate\\\\Tempest II\"\n";

/// A prefix with a registry of those keys; its folder of the game is returned.
fs::path MakePrefix(const fs::path& prefix, const std::string& keys) {
    fs::path game = prefix / "drive_c/Program Files/Brightgate/Tempest II";
    fs::create_directories(game);
    fs::create_directories(prefix / "dosdevices");
    if (!fs::is_symlink(prefix / "dosdevices/c:")) {
        fs::create_symlink("../drive_c", prefix / "dosdevices/c:");
    }
    Write(prefix / "system.reg", std::string(kRegistryHead) + keys, 1);
    return game;
}

/// Keys of about `bytes` bytes together, in Wine's order.
std::string ClassKeys(const std::string& parent, std::size_t bytes) {
    std::string keys;
    for (int i = 10'000; keys.size() < bytes; ++i) {
        const std::string id = "{000" + std::to_string(i) + "-0000-0000-c000-000000000046}";
        keys += "[" + parent + "\\\\Classes\\\\CLSID\\\\" + id +
                "] 1052000000\n#time=1c31c7e2d3b4a00\n@=\"Class " + std::to_string(i) + "\"\n\n[" + parent +
                "\\\\Classes\\\\CLSID\\\\" + id +
                "\\\\InprocServer32] 1052000000\n#time=1c31c7e2d3b4a00\n"
                "@=\"C:\\\\windows\\\\system32\\\\ole32.dll\"\n\"ThreadingModel\"=\"Both\"\n\n";
    }
    return keys;
}

} // namespace

fs::path MakePrefix(const fs::path& prefix) { return MakePrefix(prefix, std::string(kGameKey)); }

void MakeLauncherPrefixes(const fs::path& home, int count, std::size_t registryBytes) {
    const std::string before = ClassKeys("Software", registryBytes / 2);
    const std::string after = ClassKeys("Software\\\\Wow6432Node", registryBytes / 2);
    for (int i = 0; i < count; ++i) {
        const auto prefix =
            home / ".local/share/Steam/steamapps/compatdata" / std::to_string(1'000 + i) / "pfx";
        MakePrefix(prefix, before + std::string(i == 0 ? kGameKey : "") + after);
        fs::last_write_time(prefix / "system.reg",
                            fs::file_time_type::clock::now() - std::chrono::hours(count - i));
    }
}

void MakeDemo(const fs::path& folder) {
    MakeGame(MakePrefix(folder / "prefix"), 900, 12'000'000);
    const fs::path mods = folder / "app/mods";

    const fs::path refit = mods / "Aurora Refit";
    WriteSome(refit, "odf\\ships\\", 0, 11, 100);
    WriteSome(refit, "Textures\\Rgb\\", 0, 7, 200);
    WriteSome(refit, "Sod\\", 40, 45, 300);
    Write(refit / "readme.txt", "Aurora Refit: twelve hulls, drawn and balanced anew.\r\n", 3);
    Write(refit / "ModInfo.txt",
          ModInfoText("The Aurora yard", "Twelve hulls, drawn and balanced anew, with textures to match",
                      "2.1"),
          4);
    Write(refit / "ModPic.bmp", SkyBitmap(457, 89, 12), 5);

    const fs::path border = mods / "Border Worlds";
    WriteSome(border, "missions\\", 0, 3, 400);
    WriteSome(border, "bitmaps\\Backgrounds\\", 0, 2, 500);
    Write(border / "ModInfo.txt", ModInfoText("M. Lantern", "Four missions beyond the frontier", "1.0"), 6);
    const fs::path night = border / "Addon/Long Night";
    WriteSome(night, "bitmaps\\Backgrounds\\", 1, 4, 600);
    Write(night / "ModInfo.txt", ModInfoText("M. Lantern", "Darker skies for Border Worlds", "1.0"), 7);

    const fs::path comet = mods / "Comet Patrol";
    WriteSome(comet, "odf\\ships\\", 900, 904, 700);
    WriteSome(comet, "sounds\\effects\\", 900, 903, 800);
    Write(comet / "ModInfo.txt",
          ModInfoText("Tail & Co", "A new patrol; no file of the game is replaced", "0.9"), 8);
}

} // namespace quillbay::sample
