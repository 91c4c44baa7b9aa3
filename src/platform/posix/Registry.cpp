#include "platform/Registry.h"

#include "platform/OrderedSystemReg.h"
#include "platform/SystemReg.h"
#include "platform/posix/BoundedRead.h"
#include "platform/posix/LauncherPrefixes.h"
#include "platform/posix/NativePath.h"
#include "platform/posix/UniqueFd.h"
#include "platform/posix/WinePrefix.h"

#include <array>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

/// Many times the largest registry seen; a larger file is none.
constexpr std::size_t kLargestRegistry = std::size_t{256} * 1024 * 1024;
/// A registry that is no larger is read whole, which takes no longer than looking for the place of a key.
constexpr std::size_t kSmallRegistry = std::size_t{128} * 1024;
/// Of those launchers' registries that have to be read whole, so that a start never takes long.
constexpr std::size_t kMostWholeBytes = std::size_t{512} * 1024 * 1024;

std::optional<std::string> ReadValue(const std::string& prefix, std::string_view key,
                                     std::string_view valueName) {
    SystemRegSearch search(key, valueName);
    const bool read = ReadBounded(prefix + "/system.reg", kLargestRegistry,
                                  [&](std::string_view piece) { return search.Feed(piece); });
    return read ? search.Finish() : std::nullopt;
}

/// Bytes of a file by their offset; one piece is kept.
class FilePieces {
public:
    explicit FilePieces(const std::string& path)
        : file_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}

    /// At least two bytes while there are as many.
    std::string_view At(std::uint64_t offset) {
        if (offset < start_ || offset + 1 >= start_ + length_) {
            const auto count = ::pread(file_.Get(), piece_.data(), piece_.size(), static_cast<off_t>(offset));
            start_ = offset;
            length_ = count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        return std::string_view(piece_.data(), length_).substr(offset - start_);
    }

private:
    UniqueFd file_;
    std::array<char, 4096> piece_{};
    std::uint64_t start_ = 0;
    std::size_t length_ = 0;
};

/// The value in a registry that a launcher keeps. `wholeBytes`, the bytes that may still be read whole, gets
/// less.
std::optional<std::string> ReadLauncherValue(const LauncherPrefix& prefix, std::string_view key,
                                             std::string_view valueName, std::size_t& wholeBytes) {
    if (prefix.registryBytes > kSmallRegistry) {
        FilePieces pieces(prefix.path + "/system.reg");
        auto result = FindInOrderedReg(
            prefix.registryBytes, [&](std::uint64_t offset) { return pieces.At(offset); }, key, valueName);
        if (result.ordered) return std::move(result.value);
    }
    if (prefix.registryBytes > wholeBytes) return std::nullopt;
    wholeBytes -= prefix.registryBytes;
    return ReadValue(prefix.path, key, valueName);
}

RegisteredFolder FolderOf(const std::string& prefix, const std::optional<std::string>& value) {
    if (!value || value->empty()) return {};
    return {.path = NativePathIn(prefix, *value), .prefix = prefix};
}

/// False, too, for the path of a drive that its prefix does not have.
bool IsExisting(const RegisteredFolder& folder) {
    if (!folder.path.starts_with('/')) return false;
    const auto path = FindArgumentPath(folder.path);
    struct stat info {};
    return path && ::stat(path->c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

class WineRegistry : public Registry {
public:
    std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                   std::string_view fallback) const override {
        return ReadValue(EnvironmentPrefix(), key, valueName).value_or(std::string(fallback));
    }

    RegisteredFolder FindRegisteredFolder(std::string_view key, std::string_view valueName) const override {
        const auto ownPrefix = EnvironmentPrefix();
        auto own = FolderOf(ownPrefix, ReadValue(ownPrefix, key, valueName));
        if (PrefixIsChosen() || IsExisting(own)) return own;
        std::optional<RegisteredFolder> newest;
        std::size_t wholeBytes = kMostWholeBytes;
        for (const auto& prefix : LauncherPrefixes()) {
            auto folder = FolderOf(prefix.path, ReadLauncherValue(prefix, key, valueName, wholeBytes));
            if (!IsExisting(folder)) continue;
            if (newest) {
                newest->otherPrefixes = true;
                break;
            }
            newest = std::move(folder);
        }
        return newest.value_or(std::move(own));
    }
};

} // namespace

std::unique_ptr<Registry> MakeRegistry() { return std::make_unique<WineRegistry>(); }

} // namespace quillbay
