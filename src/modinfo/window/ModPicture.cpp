#include "modinfo/window/ModPicture.h"

#include "common/window/LoadPicture.h"

#include <algorithm>

namespace quillbay {

QPixmap LoadModPicture(const FileSystem& files, const std::vector<std::string>& paths) {
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        const QImage image = LoadPicture(files, *path, {"bmp", "jpeg"});
        if (!image.isNull()) {
            return QPixmap::fromImage(image.copy(0, 0, std::min(image.width(), kPictureWidth),
                                                 std::min(image.height(), kPictureHeight)));
        }
    }
    return {};
}

} // namespace quillbay
