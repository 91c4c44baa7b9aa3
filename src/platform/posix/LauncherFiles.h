#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The few values that matter here in the files that game launchers keep about their Wine prefixes. Each
/// reader takes one pass over any text; a damaged text yields what stands before the damage.
namespace quillbay {

/// The library folders in a `libraryfolders.vdf` of Steam: `"1" "/disk/Games"` in its old form,
/// `"1" { "path" "/disk/Games" ... }` in the new one.
std::vector<std::string> SteamLibraries(std::string_view vdf);

/// The text of every member named `key` of any object in a JSON text, escapes resolved. `key` is ASCII.
std::vector<std::string> JsonTexts(std::string_view json, std::string_view key);

/// The text of every line `key: text` of a YAML block mapping, at any depth: plain, or in quotes of either
/// kind, and with the lines that continue it. `key` is ASCII.
std::vector<std::string> YamlTexts(std::string_view yaml, std::string_view key);

} // namespace quillbay
