#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

/// Games and libraries made up for trying the program out.
namespace quillbay::sample {

/// A game with about `files` files and `bytes` bytes in all known folders, as unevenly spread as a real
/// one's.
void MakeGame(const std::filesystem::path& game, std::size_t files, std::uint64_t bytes);

/// A mod that replaces every file of the game by another of about the same size.
void MakeReplacingMod(const std::filesystem::path& game, const std::filesystem::path& mod);

/// A library of `mods` mods with a few files each, the first `addons` of them with an addon.
void MakeLibrary(const std::filesystem::path& modLibrary, std::size_t mods, std::size_t addons);

/// `count` small object definitions without errors in `folder`, all spread over the folders that a game has
/// for them when `spread`, else directly in it.
void MakeDefinitions(const std::filesystem::path& folder, std::size_t count, bool spread);

/// Loose files in a folder: `count` of several types, the first `definitions` of them object definitions.
void MakeLooseFiles(const std::filesystem::path& folder, std::size_t count, std::size_t definitions);

/// A Wine prefix with a drive C:, and the registry entry by which the game is found. Returns the game's
/// folder in it, which is made.
std::filesystem::path MakePrefix(const std::filesystem::path& prefix);

/// `count` prefixes of a game launcher, each with a registry of about `registryBytes` bytes. The oldest names
/// a game, whose folder is made.
void MakeLauncherPrefixes(const std::filesystem::path& home, int count, std::size_t registryBytes);

/// `prefix` with a small game and `app/mods` with a library that shows what a mod can be.
void MakeDemo(const std::filesystem::path& folder);

} // namespace quillbay::sample
