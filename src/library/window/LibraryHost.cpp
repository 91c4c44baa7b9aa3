#include "library/window/LibraryHost.h"

#include <QAction>

namespace quillbay {

LibraryHost::LibraryHost(const Services& services)
    : ProgramDirectory(services.programDirectory), services_(services) {}

bool LibraryHost::CanStart(const QAction& item) const {
    return item.isEnabled() && Phase == ProgramPhase::Running;
}

} // namespace quillbay
