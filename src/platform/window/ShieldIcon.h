#pragma once

#include <QIcon>

namespace quillbay {

/// The system's sign for what needs an administrator; empty on POSIX.
QIcon ShieldIcon();

} // namespace quillbay
