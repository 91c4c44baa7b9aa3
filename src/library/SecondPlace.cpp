#include "library/SecondPlace.h"

#include "platform/PathText.h"

namespace quillbay {

std::error_code SecondPlace::Give(const std::string& from, const std::string& to, bool replace) {
    if (const auto folder = Parent(from); otherDisk_ != folder) {
        const auto error = files_.HardLink(from, to, replace);
        if (!error) return {};
        if (error == std::errc::cross_device_link) otherDisk_ = folder;
    }
    return files_.Copy(from, to, {.replace = replace, .keepLink = true, .flush = true});
}

} // namespace quillbay
