#include "odf/OdfChecks.h"
#include "odf/OdfLines.h"
#include "odf/OdfRepair.h"
#include "odf/UnitStatistics.h"
#include "platform/CodePage.h"
#include "platform/TextLines.h"

#include <cstdint>
#include <cstdlib>

/// Reads, checks and repairs any bytes: what got its line ends keeps them, what the removal of unused lines
/// leaves has none to remove, a failed check names a part of its line, and a quoted text lies in its line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillbay;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    const std::string ended = WithLineEnds(bytes);
    if (WithLineEnds(ended) != ended) std::abort();
    const auto kept = RemoveUnusedLines(bytes);
    if (kept && RemoveUnusedLines(*kept)) std::abort();

    const OdfSurroundings around{{}, {""}};
    const auto failed = CheckOdfText(DecodeSystemText(bytes), OdfCheckSet{}.set(), around);
    if (failed && DecodeSystemText(ended).find(failed->cutText) == std::string::npos) std::abort();

    for (const std::string& caption : FindUnitStatistics(bytes))
        if (caption.find(" = ") == std::string::npos) std::abort();
    ForEachLine(bytes, [](std::string_view line) {
        const auto quoted = QuotedField(line);
        if (quoted && line.find(*quoted) == std::string_view::npos) std::abort();
        const auto item = BuildItemOdf(line), weapon = WeaponOdf(line);
        const auto tip = TooltipValue(line), verbose = VerboseTooltipValue(line);
        for (const auto& value : {item, weapon, tip, verbose})
            if (value && value->size() > line.size() + 4) std::abort(); // ".odf" may have been added
    });
    return 0;
}
