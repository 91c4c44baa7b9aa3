#pragma once

#include "platform/FileSystem.h"

#include <string_view>

namespace quillbay {

enum class NewFolderOutcome {
    Made,
    Exists,           ///< something of that name, in any letter case, is in `mods`
    InvalidName,      ///< Windows or the list could not keep the name apart from another one
    InvalidCharacter, ///< one that Windows allows in no name, a separator among them
    Failed,           ///< the folder could not be made
};

/// What MakeModFolder would come to; Made where only the disk could still object.
NewFolderOutcome CheckModName(const FileSystem& files, std::string_view modsFolder, std::string_view name);

/// Makes an empty mod folder. The names that Windows refuses or changes are refused on every system, so that
/// a library can move from one to the other; nothing is made then.
NewFolderOutcome MakeModFolder(FileSystem& files, std::string_view modsFolder, std::string_view name);

} // namespace quillbay
