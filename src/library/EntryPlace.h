#pragma once

#include "library/ModLayout.h"
#include "platform/Archive.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quillbay {

/// Where an entry of an archive belongs, by its name alone.
struct EntryPlace {
    bool leadsOut = false;                ///< the name leads out of the folder that it is unpacked into
    std::vector<std::string_view> names;  ///< of the folders and of itself; parts of the entry's name
    std::optional<LeftOutReason> leftOut; ///< why it is no part of a mod,
    std::size_t leftOutAt = 0;            ///< which of the names says so
};

/// Both separators count, on every system; `.` and doubled separators do not.
EntryPlace FindPlace(const ArchiveEntry& entry);

} // namespace quillbay
