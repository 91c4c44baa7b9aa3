#pragma once

#include "platform/FileSystemWrapper.h"

#include <string_view>
#include <vector>

namespace quillbay {

/// A tree without the folders that are linked or mounted into it: they are not listed, and no folder is made
/// at their place (cross_device_link), so that work on the listed folders never leaves the tree.
class OwnTree : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override;
    std::error_code MakeFolder(std::string_view folder) override;
};

} // namespace quillbay
