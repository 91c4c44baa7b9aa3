#pragma once

#include "library/ModUnpacker.h"
#include "platform/Archive.h"
#include "platform/FileSystem.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// The road of an archive or a folder into the library.
namespace quillbay {

/// What a mod's name meets in `mods`.
enum class ModPlace {
    Free,
    Replaceable, ///< a mod that may be replaced
    Taken,       ///< something that may not: a file, a link, a mount, a mod that holds the game
    InvalidName,
    InvalidCharacter,
};

struct PlacedMod {
    std::error_code error;     ///< then it is not in the library
    std::string name;          ///< of a mod that it has replaced in that one's spelling
    bool wasInstalled = false; ///< the mod that it has replaced, or an addon of it; it still is
};

/// Unpacks one archive or folder, then puts the mods in it into the library, one rename each. Whatever is not
/// put there is removed at the end.
class ModIntake {
public:
    /// `files` must outlive it.
    ModIntake(FileSystem& files, ArchiveOpener openArchive, std::string modLibrary,
              std::string gameDirectory);
    ModIntake(const ModIntake&) = delete;
    ModIntake& operator=(const ModIntake&) = delete;
    ~ModIntake();

    /// Unpacks `path`, an archive or a folder.
    IntakeFailure Unpack(const std::string& path, const IntakeLimits& limits, const IntakeProgress& progress);
    /// What has been unpacked.
    const ModLayout& Layout() const { return layout_; }

    ModPlace FindPlace(std::string_view name) const;
    /// Puts a mod of the layout into the library, in the place of the one of that name only where the user
    /// has said so. After a failure it may be tried again.
    PlacedMod Place(std::size_t mod, const std::string& name, bool replace);

private:
    struct Waiting {
        std::string place;      ///< where the mod is now
        std::size_t papers = 0; ///< how many of its moves are done
    };

    IntakeFailure MakeStaging();
    std::error_code MovePapers(const NewMod& mod, Waiting& waiting);
    std::error_code ReplaceBy(std::string& place, PlacedMod& placed);

    FileSystem& files_;
    ArchiveOpener openArchive_;
    std::string modLibrary_;
    std::string gameDirectory_;
    std::string staging_; ///< empty before it is made
    ModLayout layout_;
    std::vector<Waiting> waiting_; ///< as the mods of the layout
};

} // namespace quillbay
