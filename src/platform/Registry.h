#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillbay {

/// The part of the Windows registry that the program reads: HKEY_LOCAL_MACHINE, in both the 64-bit and the
/// 32-bit view (the first view that has the value wins, the 64-bit one first).
/// On POSIX: the `system.reg` of the Wine prefix in `$WINEPREFIX`, else `~/.wine`.
class Registry {
public:
    virtual ~Registry() = default;

    /// The string value (type REG_SZ) as UTF-8, cut at its first NUL; `fallback` when the key or value is
    /// missing, of another type, or the registry cannot be read. Key and value names ignore letter case.
    [[nodiscard]] virtual std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                                         std::string_view fallback = {}) const = 0;
};

std::unique_ptr<Registry> MakeRegistry();

} // namespace quillbay
