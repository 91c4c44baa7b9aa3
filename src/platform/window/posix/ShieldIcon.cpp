#include "platform/window/ShieldIcon.h"

namespace quillbay {

QIcon ShieldIcon() { return {}; }

} // namespace quillbay
