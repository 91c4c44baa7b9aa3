#pragma once

#include "library/FolderMaker.h"
#include "library/KnownFolders.h"
#include "platform/FileSystem.h"

#include <array>

namespace quillbay {

/// Removes the known folders that hold nothing, children first: those that a job made and those that were
/// empty before it. `existing` is the listing from before the job, `filled` tells the positions into which
/// the job put something.
void RemoveEmptyKnownFolders(FileSystem& files, const KnownFolders& existing, const FolderMaker& maker,
                             const std::array<bool, kGameFolderCount>& filled);

} // namespace quillbay
