#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace quillbay::test {

/// Sets an environment variable (removes it without a value) and puts back what it was at the end. POSIX.
class ScopedVariable {
public:
    ScopedVariable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) old_ = old;
        Set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { Set(old_); }

private:
    void Set(const std::optional<std::string>& value) {
        value ? ::setenv(name_.c_str(), value->c_str(), 1) : ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> old_;
};

} // namespace quillbay::test
