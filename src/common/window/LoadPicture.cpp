#include "common/window/LoadPicture.h"

#include "platform/FileSystem.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace quillbay {

QImage LoadPicture(const FileSystem& files, std::string_view path,
                   std::initializer_list<QByteArrayView> formats) {
    const auto bytes = files.Read(path, 0, kMaxPictureBytes);
    if (!bytes) return {};
    QByteArray data = QByteArray::fromRawData(bytes->data(), static_cast<qsizetype>(bytes->size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    if (std::ranges::find(formats, QByteArrayView(reader.format())) == formats.end()) return {};
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > kMaxPicturePixels) return {};
    return reader.read();
}

} // namespace quillbay
