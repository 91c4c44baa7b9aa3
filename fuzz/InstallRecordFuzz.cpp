#include "library/InstallRecord.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// What is taken for a record comes back as it was. The last line, which seals the others, is made here:
/// otherwise no input would ever get past it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillbay;
    std::string text(reinterpret_cast<const char*>(data), size);
    if (ParseInstallRecord(text)) std::abort();
    text += "end " + ToHex(FingerprintOf(text)) + "\n";
    const auto record = ParseInstallRecord(text);
    if (!record) return 0;
    const auto again = ParseInstallRecord(ToText(*record));
    if (!again || *again != *record) std::abort();
    for (const auto& file : record->files)
        if (file.versions.empty() || file.name.find_first_of("\\/") != std::string::npos) std::abort();
    return 0;
}
