#include "platform/ProgramLocation.h"

#include "platform/WriteTrial.h"

namespace quillbay {

std::string ChooseProgramFolder(const ProgramPlaces& places,
                                const std::function<bool(const std::string& folder)>& isWritable) {
    const auto& beside = places.executable;
    if (beside.empty()) return places.user;
    const bool isPortable = isWritable(beside + "/mods") || (!places.isForPrograms && isWritable(beside));
    return isPortable || places.user.empty() ? beside : places.user;
}

bool IsWritableFolder(const std::string& folder) { return !TryToWriteInto(folder); }

} // namespace quillbay
