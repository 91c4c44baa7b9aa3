#include "platform/ProgramLocation.h"

#include <array>
#include <climits>
#include <unistd.h>

namespace quillbay {

std::string FindProgramDirectory() {
    std::array<char, PATH_MAX> text{};
    const auto length = ::readlink("/proc/self/exe", text.data(), text.size());
    if (length <= 0) return {};
    const std::string program(text.data(), static_cast<std::size_t>(length));
    const auto at = program.rfind('/');
    return at == std::string::npos ? std::string() : program.substr(0, at);
}

} // namespace quillbay
