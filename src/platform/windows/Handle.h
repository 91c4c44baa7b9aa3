#pragma once

#include <utility>
#include <windows.h>

namespace quillbay {

/// Owns an object handle of the system.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (handle_) CloseHandle(handle_);
    }

    explicit operator bool() const { return handle_ != nullptr; }
    HANDLE Get() const { return handle_; }

private:
    HANDLE handle_ = nullptr;
};

} // namespace quillbay
