#include "platform/SoundPlayer.h"

#include "platform/windows/WidePath.h"
#include "platform/windows/WinError.h"

#include <windows.h>

namespace quillbay {

namespace {

class WindowsSoundPlayer : public SoundPlayer {
public:
    std::error_code Play(std::string_view file) override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const DWORD attributes = GetFileAttributesW(path->c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
        if (attributes & FILE_ATTRIBUTE_DIRECTORY) return std::make_error_code(std::errc::is_a_directory);
        if (PlaySoundW(WithoutLongPrefix(*path).c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT))
            return {};
        return std::make_error_code(std::errc::io_error);
    }
};

} // namespace

std::unique_ptr<SoundPlayer> MakeSoundPlayer() { return std::make_unique<WindowsSoundPlayer>(); }

} // namespace quillbay
