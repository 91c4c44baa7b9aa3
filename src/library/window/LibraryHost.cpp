#include "library/window/LibraryHost.h"

namespace quillbay {

LibraryHost::LibraryHost(const Services& services)
    : ProgramDirectory(services.programDirectory), services_(services) {}

} // namespace quillbay
