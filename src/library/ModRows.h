#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <string_view>
#include <vector>

/// The rows of a mod list and the folders they stand for.
namespace quillbay {

inline constexpr std::string_view kModsName = "mods";
inline constexpr std::string_view kAddonName = "Addon"; ///< in a mod's folder: holds its addons
inline constexpr std::string_view kAddonIndent = "    ";
inline constexpr std::string_view kNoModsRow = "(No mods found.)";
/// Names that this program gives to what it is working on begin with this; they are no mods.
inline constexpr std::string_view kLeftoverPrefix = "~quillbay.";

/// A folder below `mods`: `<mod>` or `<mod>\Addon\<addon>`. Empty: no mod, and every command refuses it.
struct ModPath {
    std::string text;

    bool Empty() const { return text.empty(); }
    friend bool operator==(const ModPath&, const ModPath&) = default;
};

/// An addon row begins with four blanks.
bool IsAddonRow(std::string_view row);

/// The row without the four blanks of an addon row.
std::string_view DisplayName(std::string_view row);

struct ModRow {
    std::string text;
    /// What ResolveModPath finds for the row: an addon belongs to the nearest row above that is no addon row;
    /// without one, and for the placeholder, the path is empty.
    ModPath path;
    /// Its folder held a `Backup` folder, in any letter case, when the library was scanned.
    bool isInstalled = false;

    bool IsAddon() const { return IsAddonRow(text); }
    /// Whether both are one row, of a mod that is installed or not.
    bool IsRowOf(const ModRow& other) const { return text == other.text && path == other.path; }
    friend bool operator==(const ModRow&, const ModRow&) = default;
};

enum class ModOrder {
    ByName, ///< by folded name
    AsListed,
};

/// The rows of the library: a row for each folder of `modLibrary`, with the folders in its `Addon` folder
/// below it (the last one listed first). Each folder is listed once; those that cannot be listed give no
/// rows. Without any mod the result is empty; the placeholder is the list's business.
std::vector<ModRow> ScanModLibrary(const FileSystem& files, std::string_view modLibrary,
                                   ModOrder order = ModOrder::ByName);

/// Makes `modLibrary` when it is missing and gives it its lower-case name; on a system where `Mods` and
/// `mods` can both exist, `mods` is used and nothing is merged or renamed. True when it was made.
bool PrepareLibraryFolder(FileSystem& files, std::string_view programDirectory);

/// True when the folder of the mod is there in exactly this spelling: in another letter case it may be
/// another mod.
bool ModExists(const FileSystem& files, std::string_view modLibrary, const ModPath& mod);

/// `programDirectory\mods`
std::string LibraryFolder(std::string_view programDirectory);

} // namespace quillbay
