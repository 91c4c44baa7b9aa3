#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace quillbay {

/// A real program, started in a process of its own with the driver plugin in it and commanded from here (see
/// Driver.h). It is killed when the object goes.
class DrivenProgram {
public:
    /// Starts the program. `home` holds everything that it sees of the user: the Wine prefix (`prefix`), the
    /// preferences (`config`) and the run-time folder (`runtime`); what is missing is made. Without
    /// `choosePrefix` the program looks for the prefix by itself. Throws std::system_error when the program
    /// cannot be started.
    DrivenProgram(const std::filesystem::path& program, const std::filesystem::path& home,
                  bool choosePrefix = true);
    ~DrivenProgram();
    DrivenProgram(const DrivenProgram&) = delete;
    DrivenProgram& operator=(const DrivenProgram&) = delete;

    /// Gives a command and waits for its answer; the value is returned. Throws std::runtime_error when the
    /// program ends or the command fails.
    std::string Do(std::string_view command);

    /// SIGKILL. What the program was doing stays undone.
    void Kill();

    /// Waits for the program to end by itself; its exit code, or 128 and the signal's number.
    int Wait();

    /// Just before the process was made.
    std::chrono::steady_clock::time_point StartedAt() const { return startedAt_; }

private:
    pid_t process_ = -1;
    int commands_ = -1;
    int answers_ = -1;
    std::string unread_;
    std::chrono::steady_clock::time_point startedAt_;
};

} // namespace quillbay
