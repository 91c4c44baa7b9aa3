#include "odf/OdfChecks.h"
#include "odf/OdfRepair.h"

#include <cstdint>
#include <cstdlib>

/// Checks and repairs any bytes: an unedited text keeps every byte, what the removal of unused lines leaves
/// has none to remove, and a failed check names a part of its line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillbay;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    const std::string text = OdfBytesToText(bytes);
    if (!bytes.empty() && !KeepsEveryByte(bytes, text)) std::abort();
    const auto kept = RemoveUnusedLines(bytes);
    if (kept && RemoveUnusedLines(*kept)) std::abort();

    const OdfSurroundings around{{}, {""}};
    const auto failed = CheckOdfText(DecodeSystemText(bytes), OdfCheckSet{}.set(), around);
    if (failed && text.find(OdfLineToText(failed->cutText)) == std::string::npos) std::abort();
    return 0;
}
