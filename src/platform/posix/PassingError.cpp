#include "platform/PassingError.h"

#include <cerrno>

namespace quillbay {

// Network mounts say the last two of a file that another computer locks or has just replaced. Rights do not
// come and go, so EACCES and EPERM are not among these.
bool MayPass(const std::error_code& error, FileAccess) {
    return IsInUse(error) || error == std::error_code(EAGAIN, std::generic_category()) ||
           error == std::error_code(ESTALE, std::generic_category());
}

} // namespace quillbay
