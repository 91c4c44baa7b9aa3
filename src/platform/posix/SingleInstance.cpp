#include "platform/SingleInstance.h"

#include "platform/posix/UniqueFd.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillbay {

namespace {

class LockedFile : public SingleInstance {
public:
    explicit LockedFile(UniqueFd file) : file_(std::move(file)) {}

private:
    UniqueFd file_;
};

/// Where the lock may lie, the best place first.
std::vector<std::string> LockFiles() {
    std::vector<std::string> files;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime != '\0') files.push_back(std::string(runtime) + "/quillbay.lock");
    const char* temporary = std::getenv("TMPDIR");
    const std::string folder = temporary != nullptr && *temporary != '\0' ? temporary : "/tmp";
    files.push_back(folder + "/quillbay-" + std::to_string(::getuid()) + ".lock");
    return files;
}

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::Acquire() {
    for (const auto& path : LockFiles()) {
        constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
        UniqueFd file(::open(path.c_str(), kFlags, S_IRUSR | S_IWUSR));
        if (!file) continue;
        if (::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) return std::make_unique<LockedFile>(std::move(file));
        if (errno == EWOULDBLOCK) return nullptr;
    }
    return std::make_unique<LockedFile>(UniqueFd());
}

} // namespace quillbay
