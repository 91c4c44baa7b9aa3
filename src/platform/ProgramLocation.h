#pragma once

#include <functional>
#include <string>

/// Where the program lies, and where it keeps what is the user's: `mods` and `FileList.txt`.
namespace quillbay {

/// Folders without a final separator; empty where the system does not tell.
struct ProgramPlaces {
    std::string executable;     ///< of the running executable, links resolved (a drive root `C:\` is `C:`)
    std::string user;           ///< the user's own place for data of this program; it need not exist
    bool isForPrograms = false; ///< the executable lies where the system keeps programs (Program Files)
    bool isEmptiedBySystem =
        false; ///< or in a temporary folder, into which archives are unpacked for a start
};

ProgramPlaces FindProgramPlaces();

/// The rule of both systems. A portable program keeps everything beside itself: the user can write to its
/// folder or to the `mods` in it. An installed one keeps it in the user's own place; so does one that lies
/// among the system's programs, whose folder only an administrator can write, unless `mods` is there already.
std::string ChooseProgramFolder(const ProgramPlaces& places,
                                const std::function<bool(const std::string& folder)>& isWritable);

/// True when this user can make files in an existing folder.
bool IsWritableFolder(const std::string& folder);

/// The folder that the rule gives for the running program; the user's own place is made when it is missing.
std::string MakeProgramDirectory(const ProgramPlaces& places);

} // namespace quillbay
