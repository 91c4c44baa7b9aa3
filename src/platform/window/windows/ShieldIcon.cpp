#include "platform/window/ShieldIcon.h"

#include <QImage>
#include <QPixmap>

#include <windows.h>

namespace quillbay {

QIcon ShieldIcon() {
    SHSTOCKICONINFO info{};
    info.cbSize = sizeof info;
    if (FAILED(SHGetStockIconInfo(SIID_SHIELD, SHGSI_ICON | SHGSI_SMALLICON, &info))) return {};
    const QImage image = QImage::fromHICON(info.hIcon);
    DestroyIcon(info.hIcon);
    return QIcon(QPixmap::fromImage(image));
}

} // namespace quillbay
