#pragma once

#include "platform/Archive.h"

#include <functional>
#include <string>
#include <system_error>

namespace quillbay {

class AppSettings;
class FileSystem;
class Registry;
class ShellOpener;
class SoundPlayer;

/// Everything outside the program that its windows use. `main` hands in the real ones, a test its own; all
/// of them outlive the main window.
struct Services {
    FileSystem& files;
    const Registry& registry;
    AppSettings& settings;
    ShellOpener& shell;
    SoundPlayer& sound;
    ArchiveOpener openArchive;
    std::string programDirectory; ///< without a final separator
    /// Starts the program again with more rights; empty where there are none to be had. After a success this
    /// instance has to end.
    std::function<std::error_code()> startAsAdministrator = {};
};

} // namespace quillbay
