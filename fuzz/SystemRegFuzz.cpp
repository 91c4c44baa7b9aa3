#include "platform/OrderedSystemReg.h"
#include "platform/SystemReg.h"

#include <cstdint>
#include <cstdlib>

/// Any text is survived, and read alike in one piece and in many; the search by the order of keys ends, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Behind the header line, so that the fuzzer need not find that first.
    quillbay::SystemRegSearch whole("Software\\A", "P");
    quillbay::SystemRegSearch pieces("Software\\A", "P");
    whole.Feed("WINE REGISTRY Version 2\n");
    pieces.Feed("WINE REGISTRY Version 2\n");
    whole.Feed(text);
    for (std::size_t at = 0; at < size; at += 3)
        pieces.Feed(text.substr(at, 3));
    if (whole.Finish() != pieces.Finish()) std::abort();

    std::string large = "WINE REGISTRY Version 2\n";
    while (size > 0 && large.size() < 20'000)
        large.append(text);
    const auto pieceAt = [&](std::uint64_t offset) {
        return std::string_view(large).substr(offset < large.size() ? offset : large.size(), 100 + size);
    };
    quillbay::FindInOrderedReg(large.size(), pieceAt, "Software\\A", "P");
    return 0;
}
