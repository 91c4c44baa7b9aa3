#include "catalogue/CatalogueTime.h"

#include <cstdint>
#include <cstdlib>

/// A text that is read as a time gives back that time when it is written anew.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto time = quillbay::ParseCatalogueTime(text);
    if (time && quillbay::ParseCatalogueTime(quillbay::FormatCatalogueTime(*time)) != time) std::abort();
    return 0;
}
