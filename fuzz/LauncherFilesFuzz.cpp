#include "platform/posix/LauncherFiles.h"

#include <cstdint>
#include <cstdlib>

/// Any text is survived, and what is found in it is never longer than the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto& found :
         {quillbay::SteamLibraries(text), quillbay::JsonTexts(text, "p"), quillbay::YamlTexts(text, "p")}) {
        std::size_t total = 0;
        for (const auto& one : found)
            total += one.size();
        if (total > size) std::abort();
    }
    return 0;
}
