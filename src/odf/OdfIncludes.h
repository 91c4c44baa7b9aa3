#pragma once

#include "platform/FileSystem.h"

#include <bitset>
#include <cstddef>
#include <string_view>

/// What kind of object an ODF file describes, by the game's own files that it includes.
namespace quillbay {

enum OdfClass : std::size_t {
    OdfStation,
    OdfShip,
    OdfCommand,
    OdfClassCount,
};
using OdfClasses = std::bitset<OdfClassCount>;

/// The classes whose include lines an ODF file holds; it is read once for all of them. An include line is
/// `#include "NAME.odf"` in any letter case, with blanks around it, NAME being one of a class's base files of
/// the game. A line of more than a million bytes is none. What cannot be read counts as ended there.
OdfClasses OdfIncludesClass(const FileSystem& files, std::string_view file);

} // namespace quillbay
