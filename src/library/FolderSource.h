#pragma once

#include "platform/Archive.h"

#include <string_view>

namespace quillbay {

/// A folder read like an archive that holds it, or only what is in it where no archive could hold its name.
/// Links are entries of their own and are not followed.
Result<std::unique_ptr<ArchiveReader>> OpenFolder(const FileSystem& files, std::string_view folder);

} // namespace quillbay
