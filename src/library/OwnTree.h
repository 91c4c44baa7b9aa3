#pragma once

#include "platform/FileSystemWrapper.h"

#include <string>
#include <vector>

namespace quillbay {

/// A tree without the folders that are linked or mounted into it: they are not listed, and no folder is made
/// at their place (cross_device_link), so that work on the listed folders never leaves the tree.
class OwnTree : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override;
    /// The folder that holds it must have been listed.
    std::error_code MakeFolder(std::string_view folder) override;

private:
    bool LeadsOut(const std::string& path, const DirEntry& entry) const;

    mutable std::vector<std::string> hidden_; ///< paths of what listings left out
};

} // namespace quillbay
