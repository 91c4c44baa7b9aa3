#include "catalogue/LooseFileTypes.h"

#include "common/modMisc.h"
#include "platform/CaseFold.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::array<std::string_view, 8> kSoftwareSods = {
    "mnebula1.sod", "mnebula2.sod", "mnebula3.sod", "mnebula4.sod",
    "mnebula5.sod", "wcorbrfr.sod", "wshldadd.sod", "wstoptim.sod",
};
/// Only in these spellings.
constexpr std::array<std::string_view, 4> kIntros = {"intro.bik", "brightgate.bik", "FerrowindSoftware.bik",
                                                     "Halcyra.bik"};
constexpr std::string_view kOdfWithIncludes = "*.odf with '#included \"(various things)\"'";

bool IsSoftwareSod(const LooseFile& file) {
    return std::ranges::any_of(kSoftwareSods, [&](auto name) { return EqualFolded(name, file.name); });
}
bool IsOtherSod(const LooseFile& file) { return !IsSoftwareSod(file); }

bool IsShip(const LooseFile& file) { return file.odfClasses.test(OdfShip); }
bool IsStation(const LooseFile& file) { return file.odfClasses.test(OdfStation); }
bool IsCommand(const LooseFile& file) { return file.odfClasses.test(OdfCommand); }

bool IsPhaser(const LooseFile& file) { return ContainsText(file.name, "phas"); }
bool IsPhoton(const LooseFile& file) {
    return ContainsText(file.name, "phot") || ContainsText(file.name, "artil") ||
           ContainsText(file.name, "plas");
}
bool IsPulse(const LooseFile& file) { return ContainsText(file.name, "pulse"); }

bool StartsWithT2(const LooseFile& file) { return StartsFolded(file.name, "t2"); }
bool IsAiConfig(const LooseFile& file) { return EqualFolded(file.name, "strategic_ai_config.txt"); }
bool IsAnimation(const LooseFile& file) {
    return StartsWithT2(file) || std::ranges::find(kIntros, file.name) != kIntros.end();
}

} // namespace

const std::array<LooseFileType, kLooseFileTypeCount> LooseFileTypes = std::to_array<LooseFileType>({
    {"Bzn", {".bzn"}, nullptr, R"(bzn\)", "*.bzn", "bzn"},
    {R"(Textures\Rgb)", {".tga"}, nullptr, R"(Textures\Rgb\)", "*.tga", R"(Textures\rgb)"},
    {"Techtree", {".tt"}, nullptr, R"(techtree\)", "*.tt", "Techtree"},
    {"Sprites", {".spr"}, nullptr, R"(Sprites\)", "*.spr", "Sprites"},
    {"Sounds", {".wav"}, nullptr, R"(sounds\)", "*.wav", "Sounds", /*isOffered=*/false},
    {R"(Sod\Software)",
     {".sod"},
     IsSoftwareSod,
     R"(Sod\Software\)",
     "Mnebula1-5.sod, wcorbrfr.sod, wshldadd.sod, wstoptim.sod",
     R"(Sod\Software)"},
    {"Sod", {".sod"}, IsOtherSod, R"(Sod\)", R"(*.sod (Other than the Sod\Software ones))", "Sod"},
    {R"(Odf\Ships)", {".odf"}, IsShip, R"(odf\ships\)", kOdfWithIncludes, R"(odf\Ships)"},
    {R"(Odf\Stations)", {".odf"}, IsStation, R"(odf\stations\)", kOdfWithIncludes, R"(odf\Stations)"},
    {R"(Odf\Commands)", {".odf"}, IsCommand, R"(odf\commands\)", kOdfWithIncludes, R"(odf\Commands)"},
    {R"(Odf\Weapons\Phasers)",
     {".odf"},
     IsPhaser,
     R"(odf\weapons\Phasers\)",
     "*phas*.odf",
     R"(odf\Weapons\Phasers)"},
    {R"(Odf\Weapons\Photons)",
     {".odf"},
     IsPhoton,
     R"(odf\weapons\Photons\)",
     "*phot*.odf or *artil*.odf or *plas*.odf",
     R"(odf\Weapons\Photons)"},
    {R"(Odf\Weapons\Pulse)",
     {".odf"},
     IsPulse,
     R"(odf\weapons\Pulse\)",
     "*pulse*.odf",
     R"(odf\Weapons\Pulse)"},
    {"Objectives", {".txt"}, StartsWithT2, R"(objectives\)", "t2*.txt", "Objectives"},
    {"Missions", {".drl", ".dsl"}, nullptr, R"(missions\)", "*.drl, *.dsl", "Missions"},
    {R"(Ai\Aips)", {".aip"}, nullptr, R"(Ai\AIPs\)", "*.aip", R"(Ai\Aips)"},
    {"Ai", {".txt"}, IsAiConfig, R"(Ai\)", "strategic_AI_config.txt", "Ai"},
    {"Animations", {".bik"}, IsAnimation, R"(animations\)", "t2*.bik, Intro.bik, other intros", "Animations"},
    {"ShipImages",
     {".bmp"},
     nullptr,
     R"(bitmaps\AdmiralsLog\ShipImages\)",
     "(filename).bmp when (filename).odf exists",
     R"(bitmaps\AdmiralsLog\ShipImages)",
     /*isOffered=*/true,
     /*needsOdf=*/true},
});

bool LooseFileType::Matches(const LooseFile& file) const {
    const auto has = [&](std::string_view ending) {
        return !ending.empty() && EndsFolded(file.name, ending);
    };
    return file.name.size() > 3 && std::ranges::any_of(endings, has) && (!needsOdf || file.hasOdf) &&
           (!furtherTest || furtherTest(file));
}

std::optional<std::string> LooseFileHelp(std::string_view name) {
    const auto type = std::ranges::find_if(
        LooseFileTypes, [&](const LooseFileType& one) { return EqualFolded(one.name, name); });
    if (type == LooseFileTypes.end()) return std::nullopt;
    return "Files included: " + std::string(type->filesIncluded) +
           "\nCopied to: " + std::string(type->copiedTo);
}

} // namespace quillbay
