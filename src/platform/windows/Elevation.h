#pragma once

namespace quillbay {

/// Whether this process runs with an administrator's full rights.
bool IsElevated();

} // namespace quillbay
