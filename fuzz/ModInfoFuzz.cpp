#include "modinfo/ModInfo.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// The first byte says how large the pieces are that the parser gets; the values must be those of the whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t pieceSize = std::size_t{data[0]} + 1;

    quillbay::ModInfoParser whole;
    whole.Feed(bytes);
    const quillbay::ModInfoValues values = whole.Finish();

    quillbay::ModInfoParser pieces;
    for (std::size_t at = 0; at < bytes.size(); at += pieceSize)
        pieces.Feed(bytes.substr(at, pieceSize));
    const quillbay::ModInfoValues same = pieces.Finish();

    const bool equal = values.author == same.author && values.description == same.description &&
                       values.version == same.version && values.other == same.other &&
                       values.otherHeading == same.otherHeading;
    if (!equal || quillbay::MakeModInfoCaptions(values).author.empty()) std::abort();
    return 0;
}
