#include "platform/OrderedSystemReg.h"

#include "platform/SystemReg.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

constexpr std::uint64_t kSamples = 16;
/// Between keys that are no farther apart than this all lines are read.
constexpr std::uint64_t kNear = 4096;

/// Where a character of a key stands in Wine's order.
int OrderOf(char c) {
    if (c == '\\') return 0;
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

bool LessKey(std::string_view a, std::string_view b) {
    return std::ranges::lexicographical_compare(a, b, {}, OrderOf, OrderOf);
}

/// A line that begins a key.
struct KeyLine {
    std::uint64_t offset = 0;
    std::string key;
};

class OrderedReg {
public:
    OrderedReg(std::uint64_t size, const RegPieceAt& pieceAt) : size_(size), pieceAt_(pieceAt) {}

    /// False when some keys from all over the file are not in order. The first and the last key are among
    /// them: a file that was changed by hand differs there.
    bool TakeSamples() {
        for (std::uint64_t i = 0; i <= kSamples; ++i) {
            const auto place = size_ / kSamples * i;
            if (!samples_.empty() && i < kSamples && place < samples_.back().offset) continue;
            auto next = i < kSamples ? NextKey(place, size_) : LastKey();
            if (!next) continue;
            if (!samples_.empty() && LessKey(next->key, samples_.back().key)) return false;
            samples_.push_back(std::move(*next));
        }
        return true;
    }

    /// False for a file of another format.
    bool FeedHeader(SystemRegSearch& search) const {
        const auto line = Line(0);
        return line && search.Feed(*line) && search.Feed("\n");
    }

    /// Hands in the lines around the place of `key`. False when the search wants no more.
    bool FeedKey(SystemRegSearch& search, std::string_view key) const {
        std::uint64_t from = 0;
        std::uint64_t to = size_;
        const auto above =
            std::ranges::find_if(samples_, [&](const auto& sample) { return LessKey(key, sample.key); });
        if (above != samples_.end()) to = above->offset;
        if (above != samples_.begin()) from = std::prev(above)->offset;
        while (to - from > kNear) {
            const auto middle = from + (to - from) / 2;
            auto next = NextKey(middle, to);
            if (!next || LessKey(key, next->key)) {
                to = middle;
            } else {
                from = next->offset;
            }
        }
        return FeedLines(search, from, to);
    }

private:
    /// The first key whose line begins behind `from` and before `to`.
    std::optional<KeyLine> NextKey(std::uint64_t from, std::uint64_t to) const {
        while (from + 1 < to) {
            const auto piece = pieceAt_(from);
            if (piece.size() < 2) break;
            const auto found = piece.find("\n[");
            // The last byte may be the end of the line before a key.
            const auto passed = found != std::string_view::npos ? found + 1 : piece.size() - 1;
            from += passed;
            if (found == std::string_view::npos || from >= to) continue;
            const auto line = Line(from);
            auto key = line ? SystemRegSearch::KeyOf(*line) : std::nullopt;
            if (key) return KeyLine{from, std::move(*key)};
        }
        return std::nullopt;
    }

    std::optional<KeyLine> LastKey() const {
        const auto from = size_ - std::min(size_, kNear);
        std::string end;
        while (from + end.size() < size_) {
            const auto piece = pieceAt_(from + end.size());
            if (piece.empty()) break;
            end += piece;
        }
        const auto found = end.rfind("\n[");
        return found != std::string::npos ? NextKey(from + found, size_) : std::nullopt;
    }

    /// The line that begins at `offset`; none when it is longer than any that counts.
    std::optional<std::string> Line(std::uint64_t offset) const {
        std::string line;
        while (line.size() <= SystemRegSearch::kLongestLine) {
            const auto piece = pieceAt_(offset + line.size());
            const auto end = piece.find('\n');
            line += piece.substr(0, end);
            if (end != std::string_view::npos || piece.empty()) return line;
        }
        return std::nullopt;
    }

    bool FeedLines(SystemRegSearch& search, std::uint64_t from, std::uint64_t to) const {
        while (from <= to || search.IsInKey()) {
            const auto piece = pieceAt_(from);
            if (piece.empty()) break;
            if (!search.Feed(piece)) return false;
            from += piece.size();
        }
        return search.Feed("\n");
    }

    std::uint64_t size_;
    const RegPieceAt& pieceAt_;
    std::vector<KeyLine> samples_; ///< in the order of the file
};

} // namespace

OrderedRegResult FindInOrderedReg(std::uint64_t fileSize, const RegPieceAt& pieceAt, std::string_view key,
                                  std::string_view valueName) {
    SystemRegSearch search(key, valueName);
    OrderedReg file(fileSize, pieceAt);
    if (!file.FeedHeader(search)) return {};
    if (!file.TakeSamples()) return {.value = {}, .ordered = false};
    for (const auto& view : search.Keys()) {
        if (!view.empty() && !file.FeedKey(search, view)) break;
    }
    return {.value = search.Finish(), .ordered = true};
}

} // namespace quillbay
