#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace quillbay {

/// The first thing that could not be read while a job was planned. What is missing is no failure; what is
/// there and cannot be read is never guessed at, and nothing is changed then.
struct ReadFailure {
    std::string path;
    std::error_code error;

    explicit operator bool() const { return bool(error); }

    void Note(std::string_view failedPath, std::error_code failure) {
        if (error || !failure || failure == std::errc::no_such_file_or_directory) return;
        path = failedPath;
        error = failure;
    }
};

} // namespace quillbay
