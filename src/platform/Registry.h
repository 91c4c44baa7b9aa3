#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillbay {

/// A folder that a value of the registry names.
struct RegisteredFolder {
    std::string path;           ///< a path of this system; empty when there is no such value
    std::string prefix;         ///< POSIX: the Wine prefix whose registry names it; else empty
    bool otherPrefixes = false; ///< POSIX: other prefixes name an existing folder, too, and were passed over
};

/// The part of the Windows registry that the program reads: HKEY_LOCAL_MACHINE, in both the 64-bit and the
/// 32-bit view (the first view that has the value wins, the 64-bit one first).
/// On POSIX: the `system.reg` of Wine prefixes; a single value is read from `$WINEPREFIX`, else `~/.wine`.
class Registry {
public:
    virtual ~Registry() = default;

    /// The string value (type REG_SZ) as UTF-8, cut at its first NUL; `fallback` when the key or value is
    /// missing, of another type, or the registry cannot be read. Key and value names ignore letter case.
    [[nodiscard]] virtual std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                                         std::string_view fallback = {}) const = 0;

    /// The folder that a string value names. On POSIX: that of `$WINEPREFIX` alone where it is set, else that
    /// of `~/.wine`; does this one name no existing folder, that of the prefix with the newest `system.reg`
    /// which does, among those of game launchers.
    [[nodiscard]] virtual RegisteredFolder FindRegisteredFolder(std::string_view key,
                                                                std::string_view valueName) const;
};

std::unique_ptr<Registry> MakeRegistry();

} // namespace quillbay
