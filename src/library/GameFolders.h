#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quillbay {

inline constexpr std::size_t kGameFolderCount = 79;
inline constexpr std::size_t kKnownFolderCount = 78;

/// The game's 78 known folders, relative to the game directory, each with a final backslash and every parent
/// before its children; the 79th entry is empty and stands for the folder itself. Loops over files visit all
/// 79, loops that make or remove folders the first 78. The position, counted from 1, is the folder code of
/// the game catalogue.
extern const std::array<std::string_view, kGameFolderCount> GameFolders;

/// Where exactly this entry stands in GameFolders, counted from 0 (one less than GetFolderCode, as the
/// catalogue counts from 1); kGameFolderCount when it is none.
std::size_t PositionOfFolder(std::string_view entry);

} // namespace quillbay
