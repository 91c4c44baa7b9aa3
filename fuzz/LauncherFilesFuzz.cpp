#include "platform/posix/LauncherFiles.h"

#include <cstdint>
#include <cstdlib>

/// Any text is survived, what is found in it is never longer than the text, and it hides nothing that stands
/// before it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto& found :
         {quillbay::SteamLibraries(text), quillbay::JsonTexts(text, "p"), quillbay::YamlTexts(text, "p")}) {
        std::size_t total = 0;
        for (const auto& one : found)
            total += one.size();
        if (total > size) std::abort();
    }
    const auto behind = [text](std::string before) { return before.append(text); };
    for (const auto& found :
         {quillbay::SteamLibraries(behind("\"libraryfolders\" { \"0\" { \"path\" \"/a\" ")),
          quillbay::JsonTexts(behind("{ \"p\": \"/a\", "), "p"),
          quillbay::YamlTexts(behind("p: \"/a\"\n"), "p")})
        if (found.empty() || found.front() != "/a") std::abort();
    return 0;
}
