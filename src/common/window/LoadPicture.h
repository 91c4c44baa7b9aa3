#pragma once

#include <QByteArrayView>
#include <QImage>

#include <initializer_list>
#include <string_view>

namespace quillbay {

class FileSystem;

/// Larger picture files are not read to the end, and so do not decode.
inline constexpr std::size_t kMaxPictureBytes = 64u << 20;
/// Pictures of more pixels do not load: on the screen a pixel takes four bytes, whatever it takes in the
/// file.
inline constexpr qint64 kMaxPicturePixels = 32 << 20;

/// The picture in a file, null when it does not decode. Its format is told by the content and must be one of
/// `formats` ("bmp", "jpeg", "gif").
QImage LoadPicture(const FileSystem& files, std::string_view path,
                   std::initializer_list<QByteArrayView> formats);

} // namespace quillbay
