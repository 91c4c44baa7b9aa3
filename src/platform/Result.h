#pragma once

#include <cassert>
#include <system_error>
#include <utility>
#include <variant>

namespace quillbay {

/// A value, or the reason why there is none.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::move(value)) {}
    /// `error` must be set: a result without a value always has a reason.
    Result(std::error_code error) : state_(error) { assert(error); }
    Result(std::errc error) : state_(std::make_error_code(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(state_); }
    const T& operator*() const { return std::get<T>(state_); }
    T& operator*() { return std::get<T>(state_); }
    const T* operator->() const { return &std::get<T>(state_); }
    T* operator->() { return &std::get<T>(state_); }

    /// The reason; no error when there is a value.
    std::error_code Error() const {
        const auto* error = std::get_if<std::error_code>(&state_);
        return error ? *error : std::error_code{};
    }
    /// The value, or `fallback` when there is none.
    T ValueOr(T fallback) && { return *this ? std::move(std::get<T>(state_)) : std::move(fallback); }

private:
    std::variant<T, std::error_code> state_;
};

/// Marks an outcome that a rule says to pass over, so that forgotten checks stay visible.
inline void Ignore(const std::error_code&) {}

} // namespace quillbay
