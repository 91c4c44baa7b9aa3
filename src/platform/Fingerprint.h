#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// 128 bits by which files are told apart (XXH3): equal for equal bytes, and different for different ones as
/// long as nobody makes them to deceive.
struct Fingerprint {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    bool operator==(const Fingerprint&) const = default;
};

Fingerprint FingerprintOf(std::string_view bytes);

/// 32 hexadecimal digits in lower case.
std::string ToHex(const Fingerprint& fingerprint);
/// Nothing when `text` is not exactly what ToHex gives.
std::optional<Fingerprint> FingerprintFromHex(std::string_view text);

/// The fingerprint of bytes that come in parts.
class Fingerprinter {
public:
    Fingerprinter();
    ~Fingerprinter();
    Fingerprinter(const Fingerprinter&) = delete;
    Fingerprinter& operator=(const Fingerprinter&) = delete;

    void Add(std::string_view bytes);
    /// Of everything that was added.
    Fingerprint Finish() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quillbay
