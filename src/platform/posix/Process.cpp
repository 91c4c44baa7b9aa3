#include "platform/posix/Process.h"

#include "platform/posix/SystemError.h"
#include "platform/posix/UniqueFd.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr std::string_view kUsualPath = "/usr/local/bin:/usr/bin:/bin";
constexpr int kReportFd = 3;

/// What exec needs, made before the fork: afterwards nothing may be allocated.
class ExecTexts {
public:
    explicit ExecTexts(const Command& command)
        : arguments_(command.arguments), environment_(MergedEnvironment(command)),
          argumentPointers_(Pointers(arguments_)), environmentPointers_(Pointers(environment_)),
          workingFolder_(command.workingFolder) {}

    char* const* Arguments() const { return argumentPointers_.data(); }
    char* const* Environment() const { return environmentPointers_.data(); }
    const char* WorkingFolder() const { return workingFolder_.empty() ? nullptr : workingFolder_.c_str(); }

private:
    static std::vector<std::string> MergedEnvironment(const Command& command) {
        std::vector<std::string> merged;
        for (const auto& [name, value] : command.environment)
            merged.push_back(name + '=' + value);
        for (char** at = environ; at != nullptr && *at != nullptr; ++at) {
            const std::string_view variable = *at;
            const auto name = variable.substr(0, variable.find('='));
            const bool replaced = std::any_of(command.environment.begin(), command.environment.end(),
                                              [name](const auto& other) { return other.first == name; });
            if (!replaced) merged.emplace_back(variable);
        }
        return merged;
    }
    static std::vector<char*> Pointers(std::vector<std::string>& texts) {
        std::vector<char*> pointers;
        for (auto& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    std::vector<std::string> arguments_;
    std::vector<std::string> environment_;
    std::vector<char*> argumentPointers_;
    std::vector<char*> environmentPointers_;
    std::string workingFolder_;
};

[[noreturn]] void ReportAndExit(int report) {
    const int error = errno;
    const auto written = ::write(report, &error, sizeof error);
    ::_exit(written == sizeof error ? 126 : 127);
}

/// The program starts as if from a fresh session: no signal blocked or ignored, no descriptor but its own.
[[noreturn]] void ExecInChild(const ExecTexts& texts, int report) {
    for (int signal = 1; signal < NSIG; ++signal)
        ::signal(signal, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);

    if (report != kReportFd && ::dup2(report, kReportFd) < 0) ReportAndExit(report);
    ::fcntl(kReportFd, F_SETFD, FD_CLOEXEC);
    const int null = ::open("/dev/null", O_RDWR);
    for (int fd = 0; fd < kReportFd; ++fd) {
        if (null < 0 || ::dup2(null, fd) < 0) ReportAndExit(kReportFd);
    }
    ::closefrom(kReportFd + 1);
    if (texts.WorkingFolder() != nullptr && ::chdir(texts.WorkingFolder()) != 0) ReportAndExit(kReportFd);
    ::execve(texts.Arguments()[0], texts.Arguments(), texts.Environment());
    ReportAndExit(kReportFd);
}

/// Leaves the program to init, so that nobody here has to wait for it.
[[noreturn]] void ExecInGrandchild(const ExecTexts& texts, int report) {
    ::setsid();
    const pid_t grandchild = ::_Fork();
    if (grandchild < 0) ReportAndExit(report);
    if (grandchild > 0) ::_exit(0);
    ExecInChild(texts, report);
}

Result<pid_t> Start(const Command& command, bool detached) {
    const ExecTexts texts(command);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return LastError();
    const UniqueFd reader(ends[0]);
    UniqueFd writer(ends[1]);
    const pid_t child = ::fork();
    if (child < 0) return LastError();
    if (child == 0) {
        if (detached) ExecInGrandchild(texts, writer.Get());
        ExecInChild(texts, writer.Get());
    }
    writer.Reset();
    if (detached) WaitForChild(child);

    // The pipe closes unread when exec succeeds.
    int error = 0;
    ssize_t count = 0;
    do {
        count = ::read(reader.Get(), &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    if (count != sizeof error) return child;
    if (!detached) WaitForChild(child);
    return SystemError(error);
}

bool IsProgram(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

} // namespace

std::string FindProgram(std::string_view name) {
    const char* variable = std::getenv("PATH");
    std::string_view path = variable != nullptr ? std::string_view(variable) : kUsualPath;
    while (!path.empty()) {
        const auto folder = path.substr(0, path.find(':'));
        path.remove_prefix(std::min(folder.size() + 1, path.size()));
        // An empty entry would be the current folder, which can be that of a mod.
        if (folder.empty()) continue;
        auto program = std::string(folder).append("/").append(name);
        if (IsProgram(program)) return program;
    }
    return {};
}

std::error_code StartDetached(const Command& command) { return Start(command, true).Error(); }

Result<pid_t> StartChild(const Command& command) { return Start(command, false); }

void WaitForChild(pid_t child) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace quillbay
