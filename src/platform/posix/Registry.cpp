#include "platform/Registry.h"

#include "platform/SystemReg.h"
#include "platform/posix/BoundedRead.h"
#include "platform/posix/LauncherPrefixes.h"
#include "platform/posix/NativePath.h"
#include "platform/posix/WinePrefix.h"

#include <optional>

namespace quillbay {

namespace {

/// Many times the largest registry seen; a larger file is none.
constexpr std::size_t kLargestRegistry = std::size_t{256} * 1024 * 1024;
/// Of all launchers' registries together, so that a start never takes long.
constexpr std::size_t kMostLauncherBytes = std::size_t{512} * 1024 * 1024;

std::optional<std::string> ReadValue(const std::string& prefix, std::string_view key,
                                     std::string_view valueName) {
    SystemRegSearch search(key, valueName);
    const bool read = ReadBounded(prefix + "/system.reg", kLargestRegistry,
                                  [&](std::string_view piece) { return search.Feed(piece); });
    return read ? search.Finish() : std::nullopt;
}

RegisteredFolder FolderIn(const std::string& prefix, std::string_view key, std::string_view valueName) {
    const auto value = ReadValue(prefix, key, valueName);
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
        auto own = FolderIn(EnvironmentPrefix(), key, valueName);
        if (PrefixIsChosen() || IsExisting(own)) return own;
        std::optional<RegisteredFolder> newest;
        std::size_t bytesLeft = kMostLauncherBytes;
        for (const auto& prefix : LauncherPrefixes()) {
            if (prefix.registryBytes > bytesLeft) continue;
            bytesLeft -= prefix.registryBytes;
            auto folder = FolderIn(prefix.path, key, valueName);
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
