#pragma once

#include "odf/OdfIndex.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillbay {

/// What the checks compare a line with.
struct OdfSurroundings {
    OdfIndex odfs;
    std::set<std::string, std::less<>> races; ///< of BuildRaceList
};

struct OdfCheck {
    std::string_view title; ///< of the message box
    std::string_view text;  ///< of the message box
    std::string_view errorType;
    /// `line` is UTF-8, cut at its comment; a line that is not the check's own never fails.
    bool (*fails)(std::string_view line, const OdfSurroundings& around);
};

/// The checks in the order in which they run on each line.
extern const std::array<OdfCheck, 7> kOdfChecks;
/// Which of them run.
using OdfCheckSet = std::bitset<std::tuple_size_v<decltype(kOdfChecks)>>;

/// The first failed check of a text.
struct FailedOdfCheck {
    std::size_t line;    ///< from 0
    std::string cutText; ///< the line up to its comment
    const OdfCheck* check;
};

/// Runs the checks on every line of a text (UTF-8) but comment lines and blank ones.
std::optional<FailedOdfCheck> CheckOdfText(std::string_view text, const OdfCheckSet& checks,
                                           const OdfSurroundings& around);

} // namespace quillbay
