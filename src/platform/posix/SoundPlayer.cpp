#include "platform/SoundPlayer.h"

#include "platform/posix/NativePath.h"
#include "platform/posix/Process.h"

#include <array>
#include <csignal>

namespace quillbay {

namespace {

constexpr std::array<std::string_view, 3> kPlayers = {"pw-play", "paplay", "aplay"};

std::string FindPlayer() {
    for (const auto name : kPlayers) {
        auto player = FindProgram(name);
        if (!player.empty()) return player;
    }
    return {};
}

class ProcessSoundPlayer : public SoundPlayer {
public:
    ~ProcessSoundPlayer() override { Stop(); }

    std::error_code Play(std::string_view file) override {
        auto path = FindArgumentPath(file);
        if (!path) return path.Error();
        const auto player = FindPlayer();
        if (player.empty()) return std::make_error_code(std::errc::no_such_file_or_directory);
        Stop();
        const auto child = StartChild({{player, std::move(*path)}, {}, {}});
        if (!child) return child.Error();
        child_ = *child;
        return {};
    }

private:
    /// The number is still the player's, even if it has ended: nobody has waited for it yet.
    void Stop() {
        if (child_ <= 0) return;
        // A player may take its time over a polite request, and the window would wait with it.
        ::kill(child_, SIGKILL);
        WaitForChild(child_);
        child_ = 0;
    }

    pid_t child_ = 0;
};

} // namespace

std::unique_ptr<SoundPlayer> MakeSoundPlayer() { return std::make_unique<ProcessSoundPlayer>(); }

} // namespace quillbay
