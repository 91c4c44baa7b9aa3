#pragma once

#include <memory>
#include <string_view>
#include <system_error>

namespace quillbay {

class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    /// Starts playing a `.wav` file and returns; a sound that still plays is stopped first.
    /// no_such_file_or_directory when the file, or every player (POSIX), is missing.
    [[nodiscard]] virtual std::error_code Play(std::string_view file) = 0;
};

std::unique_ptr<SoundPlayer> MakeSoundPlayer();

} // namespace quillbay
