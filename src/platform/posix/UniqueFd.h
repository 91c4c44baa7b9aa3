#pragma once

#include <unistd.h>
#include <utility>

namespace quillbay {

/// Owns a file descriptor; -1 is none.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        if (this != &other) {
            Reset();
            fd_ = std::exchange(other.fd_, -1);
        }
        return *this;
    }
    ~UniqueFd() { Reset(); }

    explicit operator bool() const { return fd_ != -1; }
    int Get() const { return fd_; }
    int Release() { return std::exchange(fd_, -1); }
    void Reset() {
        if (fd_ != -1) ::close(std::exchange(fd_, -1));
    }

private:
    int fd_ = -1;
};

} // namespace quillbay
