#pragma once

#include <string>

namespace quillbay {

/// The folder in which the program keeps what is the user's, without a final separator: that of the running
/// executable, links resolved (a drive root `C:\` gives `C:`), on POSIX the user's own data folder when the
/// program is installed where the user cannot write.
std::string FindProgramDirectory();

} // namespace quillbay
