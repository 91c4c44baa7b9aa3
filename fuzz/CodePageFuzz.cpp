#include "platform/CodePage.h"

#include <cstdint>
#include <cstdlib>

/// Every byte comes back; a text that can be encoded does, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto back = quillbay::EncodeSystemText(quillbay::DecodeSystemText(bytes));
    if (back.unencodable || back.bytes != bytes) std::abort();
    const auto encoded = quillbay::EncodeSystemText(bytes);
    if (!encoded.unencodable && quillbay::DecodeSystemText(encoded.bytes) != bytes) std::abort();
    return 0;
}
