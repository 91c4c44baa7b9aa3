#include "driver/DrivenProgram.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace quillbay {

namespace {

[[noreturn]] void Fail(const char* what, int error = errno) {
    throw std::system_error(error, std::generic_category(), what);
}

std::vector<std::string> MakeEnvironment(const std::filesystem::path& home, bool choosePrefix) {
    const std::array<std::pair<std::string, std::string>, 7> ours{{
        {"WINEPREFIX", choosePrefix ? home / "prefix" : ""},
        {"XDG_CONFIG_HOME", home / "config"},
        {"XDG_RUNTIME_DIR", home / "runtime"},
        {"HOME", home},
        {"QT_PLUGIN_PATH", QUILLBAY_DRIVER_PLUGINS},
        {"QT_QPA_GENERIC_PLUGINS", "quillbaydriver"},
        {"LC_ALL", "C.UTF-8"},
    }};
    std::vector<std::string> all;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view text = *entry;
        const auto name = text.substr(0, text.find('='));
        bool replaced = false;
        for (const auto& [ourName, value] : ours) {
            replaced = replaced || name == ourName;
        }
        if (!replaced) {
            all.emplace_back(text);
        }
    }
    for (const auto& [name, value] : ours) {
        all.push_back(name + "=" + value);
    }
    return all;
}

} // namespace

DrivenProgram::DrivenProgram(const std::filesystem::path& program, const std::filesystem::path& home,
                             bool choosePrefix) {
    std::signal(SIGPIPE, SIG_IGN);
    for (const char* folder : {"prefix", "config", "runtime"}) {
        std::filesystem::create_directories(home / folder);
    }
    std::filesystem::permissions(home / "runtime", std::filesystem::perms::owner_all);

    std::array<int, 2> toProgram{};
    std::array<int, 2> fromProgram{};
    if (::pipe2(toProgram.data(), O_CLOEXEC) != 0 || ::pipe2(fromProgram.data(), O_CLOEXEC) != 0) {
        Fail("pipe");
    }
    auto environment = MakeEnvironment(home, choosePrefix);
    std::vector<char*> pointers;
    for (auto& entry : environment) {
        pointers.push_back(entry.data());
    }
    pointers.push_back(nullptr);
    std::string name = program;
    std::array<char*, 2> arguments{name.data(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toProgram[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fromProgram[1], STDOUT_FILENO);
    startedAt_ = std::chrono::steady_clock::now();
    const int error =
        ::posix_spawn(&process_, name.c_str(), &actions, nullptr, arguments.data(), pointers.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(toProgram[0]);
    ::close(fromProgram[1]);
    commands_ = toProgram[1];
    answers_ = fromProgram[0];
    if (error != 0) {
        process_ = -1;
        ::close(commands_);
        ::close(answers_);
        Fail(program.c_str(), error);
    }
}

DrivenProgram::~DrivenProgram() {
    Kill();
    ::close(commands_);
    ::close(answers_);
}

std::string DrivenProgram::Do(std::string_view command) {
    const std::string line = std::string(command) + "\n";
    if (::write(commands_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
        throw std::runtime_error("the program has ended before: " + line);
    }
    const std::string expected = "ok " + std::string(command) + "\t";
    for (;;) {
        const auto end = unread_.find('\n');
        if (end == std::string::npos) {
            std::array<char, 4096> buffer{};
            const auto count = ::read(answers_, buffer.data(), buffer.size());
            if (count <= 0) {
                throw std::runtime_error("the program ended during: " + line);
            }
            unread_.append(buffer.data(), static_cast<std::size_t>(count));
            continue;
        }
        const std::string answer = unread_.substr(0, end);
        unread_.erase(0, end + 1);
        if (answer.starts_with("failed: ")) {
            throw std::runtime_error(answer);
        }
        if (answer.starts_with(expected)) {
            return answer.substr(expected.size());
        }
    }
}

void DrivenProgram::Kill() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        Wait();
    }
}

int DrivenProgram::Wait() {
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace quillbay
