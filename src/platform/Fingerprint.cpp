#include "platform/Fingerprint.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace quillbay {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kDigitsOfHalf = 16;

Fingerprint FromHash(const XXH128_hash_t& hash) { return {hash.high64, hash.low64}; }

void AppendHalf(std::string& text, std::uint64_t half) {
    for (int shift = 60; shift >= 0; shift -= 4)
        text += kDigits[(half >> shift) & 15];
}

std::optional<std::uint64_t> ParseHalf(std::string_view text) {
    std::uint64_t half = 0;
    for (const char digit : text) {
        const auto value = kDigits.find(digit);
        if (value == std::string_view::npos) return std::nullopt;
        half = half << 4 | value;
    }
    return half;
}

} // namespace

Fingerprint FingerprintOf(std::string_view bytes) {
    return FromHash(XXH3_128bits(bytes.data(), bytes.size()));
}

std::string ToHex(const Fingerprint& fingerprint) {
    std::string text;
    text.reserve(2 * kDigitsOfHalf);
    AppendHalf(text, fingerprint.high);
    AppendHalf(text, fingerprint.low);
    return text;
}

std::optional<Fingerprint> FingerprintFromHex(std::string_view text) {
    if (text.size() != 2 * kDigitsOfHalf) return std::nullopt;
    const auto high = ParseHalf(text.substr(0, kDigitsOfHalf));
    const auto low = ParseHalf(text.substr(kDigitsOfHalf));
    if (!high || !low) return std::nullopt;
    return Fingerprint{*high, *low};
}

struct Fingerprinter::State {
    XXH3_state_t hash;
};

Fingerprinter::Fingerprinter() : state_(std::make_unique<State>()) { XXH3_128bits_reset(&state_->hash); }

Fingerprinter::~Fingerprinter() = default;

void Fingerprinter::Add(std::string_view bytes) {
    XXH3_128bits_update(&state_->hash, bytes.data(), bytes.size());
}

Fingerprint Fingerprinter::Finish() const { return FromHash(XXH3_128bits_digest(&state_->hash)); }

} // namespace quillbay
