#pragma once

#include "platform/FileSystem.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillbay {

/// The UTF-8 names that some programs write into a zip beside those in another character set, and which the
/// unpacking library passes over when it has converted the other ones.
class ZipNames {
public:
    /// Reads the list of entries of a zip; one that cannot be read has no such names. `size`: the file's.
    ZipNames(const FileSystem& files, std::string_view file, std::uint64_t size);

    /// The name of an entry by its number, in the order of the places in the file; empty without such a name.
    std::string_view Find(std::size_t entry) const {
        const auto found = names_.find(entry);
        return found == names_.end() ? std::string_view() : found->second;
    }

private:
    std::unordered_map<std::size_t, std::string> names_;
};

} // namespace quillbay
