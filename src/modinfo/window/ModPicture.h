#pragma once

#include "platform/FileSystem.h"

#include <QPixmap>

#include <string>
#include <vector>

namespace quillbay {

/// The picture area in pixels. A picture is drawn unscaled from its top left corner and cut to it.
inline constexpr int kPictureWidth = 457;
inline constexpr int kPictureHeight = 89;

/// The last of these files that decodes as a bitmap or JPEG (by content), cut to the picture area; null when
/// none does.
QPixmap LoadModPicture(const FileSystem& files, const std::vector<std::string>& paths);

} // namespace quillbay
