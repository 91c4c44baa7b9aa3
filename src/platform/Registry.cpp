#include "platform/Registry.h"

#include "platform/DosPath.h"

namespace quillbay {

RegisteredFolder Registry::FindRegisteredFolder(std::string_view key, std::string_view valueName) const {
    const std::string dosPath = ReadRegistryString(key, valueName);
    if (dosPath.empty()) return {};
    return {.path = NativePath(dosPath), .prefix = {}};
}

} // namespace quillbay
