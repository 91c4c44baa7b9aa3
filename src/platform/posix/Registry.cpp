#include "platform/Registry.h"

#include "platform/SystemReg.h"
#include "platform/posix/UniqueFd.h"
#include "platform/posix/WinePrefix.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr std::size_t kPiece = 128 * 1024;
/// Many times the largest registry seen; a larger file is none.
constexpr off_t kLargestRegistry = off_t{256} * 1024 * 1024;

class WineRegistry : public Registry {
public:
    std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                   std::string_view fallback) const override {
        const std::string path = EnvironmentPrefix() + "/system.reg";
        const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        struct stat info {};
        if (!file || ::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode) ||
            info.st_size > kLargestRegistry) {
            return std::string(fallback);
        }
        SystemRegSearch search(key, valueName);
        const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
        while (true) {
            const auto count = ::read(file.Get(), buffer.get(), kPiece);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return std::string(fallback);
            if (count == 0 || !search.Feed({buffer.get(), static_cast<std::size_t>(count)})) break;
        }
        return search.Finish().value_or(std::string(fallback));
    }
};

} // namespace

std::unique_ptr<Registry> MakeRegistry() { return std::make_unique<WineRegistry>(); }

} // namespace quillbay
