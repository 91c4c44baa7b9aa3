#include "platform/WriteTrial.h"

#include "platform/posix/NativePath.h"

#include <fcntl.h>
#include <unistd.h>

namespace quillbay {

std::error_code TryToWriteInto(std::string_view folder) {
    auto path = ToNativePath(folder);
    if (!path) return path.Error();
    // The system knows of rights, access lists and write-protected disks without a file being made.
    return CallOnEntry(*path,
                       [](const char* text) { return ::faccessat(AT_FDCWD, text, W_OK | X_OK, AT_EACCESS); });
}

} // namespace quillbay
