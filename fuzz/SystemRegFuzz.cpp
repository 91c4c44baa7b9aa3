#include "platform/SystemReg.h"

#include <cstdint>
#include <cstdlib>

/// Any text is survived, and read alike in one piece and in many.
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
    return 0;
}
