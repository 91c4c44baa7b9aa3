#pragma once

#include <memory>

namespace quillbay {

/// Held while the program runs. On POSIX a lock on `$XDG_RUNTIME_DIR/quillbay.lock` (else in the temporary
/// folder, with the user's id in the name), on Windows a named mutex; the lock of a killed program is free.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    /// Null when another instance of this user runs. Where no lock can be made at all the program may start.
    static std::unique_ptr<SingleInstance> Acquire();
};

} // namespace quillbay
