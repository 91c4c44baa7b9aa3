#include "library/window/LibraryHost.h"

#include <QAction>

namespace quillbay {

LibraryHost::LibraryHost(const Services& services)
    : ProgramDirectory(services.programDirectory), services_(services) {}

bool LibraryHost::CanStart(const QAction& item) const {
    return item.isEnabled() && Phase == ProgramPhase::Running;
}

void LibraryHost::ShowNewMod(const ModPath& path) {
    RefreshModList({.keepControls = true, .keepDetails = true});
    const auto selected = SelectedMod();
    SelectMod(path);
    // Another row's selection shows its details by itself.
    if (selected && selected->path == path) ShowModDetails();
}

} // namespace quillbay
