#pragma once

#include <cstddef>
#include <string_view>

namespace quillbay {

/// Calls `use(line)` for every line of a text file of the game or of this program: a line ends at CR LF or a
/// lone CR, a lone LF stays inside it. What follows the last line end is a line only when it is not empty.
template <typename Use>
void ForEachLine(std::string_view text, Use use) {
    while (!text.empty()) {
        const std::size_t end = text.find('\r');
        use(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
        if (text.starts_with('\n')) text.remove_prefix(1);
    }
}

} // namespace quillbay
