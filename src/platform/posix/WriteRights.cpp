#include "platform/WriteRights.h"

#include "platform/RealPath.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

std::string UserName(uid_t id) {
    const passwd* user = ::getpwuid(id);
    return user ? user->pw_name : std::to_string(id);
}

} // namespace

std::string HowToGetRights(std::string_view folder) {
    std::string text = "Quillbay is not allowed to write there. ";
    const auto real = FindRealPath(std::string(folder));
    struct stat info {};
    if (!real || ::stat(real->c_str(), &info) != 0) return text;
    const uid_t self = ::geteuid();
    if (info.st_uid == self)
        return text + "The folder is your own: allow writing to it, unless its disk is write-protected.";
    return text + "The folder belongs to " + UserName(info.st_uid) + ", and you are " + UserName(self) +
           ": let it be yours, or move the game to a folder of your own.";
}

bool CanStartAsAdministrator() { return false; }

std::error_code StartAsAdministrator() { return std::make_error_code(std::errc::operation_not_supported); }

} // namespace quillbay
