#pragma once

#include <cerrno>
#include <system_error>

namespace quillbay {

/// `error` (an errno value) as one of the errors that FileSystem promises.
inline std::error_code SystemError(int error) {
    switch (error) {
    case EPERM:
        return std::make_error_code(std::errc::permission_denied);
    case EDQUOT:
        return std::make_error_code(std::errc::no_space_on_device);
    default:
        return {error, std::generic_category()};
    }
}

inline std::error_code LastError() { return SystemError(errno); }

} // namespace quillbay
