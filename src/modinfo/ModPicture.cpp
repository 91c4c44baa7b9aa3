#include "modinfo/ModPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace quillbay {

namespace {

QImage DecodePicture(const std::string& bytes) {
    QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    // The reader refuses pictures whose pixels would take more memory than Qt's allocation limit.
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (format != "bmp" && format != "jpeg") {
        return {};
    }
    return reader.read();
}

} // namespace

QPixmap LoadModPicture(const FileSystem& files, const std::vector<std::string>& paths) {
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        const auto bytes = files.Read(*path, 0, kMaxPictureBytes);
        if (!bytes) {
            continue;
        }
        const QImage image = DecodePicture(*bytes);
        if (!image.isNull()) {
            return QPixmap::fromImage(image.copy(0, 0, std::min(image.width(), kPictureWidth),
                                                 std::min(image.height(), kPictureHeight)));
        }
    }
    return {};
}

} // namespace quillbay
