#include "platform/window/LayeredWindow.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWidget>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace quillbay {

namespace {

template <typename T>
using XcbReply = std::unique_ptr<T, decltype(&std::free)>;

/// A compositing manager of screen n owns the selection _NET_WM_CM_Sn (Extended Window Manager Hints).
QByteArray CompositingSelection() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen)) std::free(host);
    return "_NET_WM_CM_S" + QByteArray::number(screen);
}

/// Opacities come from QWidget::setWindowOpacity, which knows 256 steps on X11 too.
constexpr double kOpaque = 255.0;

} // namespace

bool LayeredWindowsAvailable() {
    const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (!connection || xcb_connection_has_error(connection)) return false;

    const QByteArray selection = CompositingSelection();
    const auto atomCookie = xcb_intern_atom(connection, true, static_cast<std::uint16_t>(selection.size()),
                                            selection.constData());
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection, atomCookie, nullptr),
                                                 &std::free);
    if (!atom || atom->atom == XCB_ATOM_NONE) return false;

    const auto ownerCookie = xcb_get_selection_owner(connection, atom->atom);
    const XcbReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, ownerCookie, nullptr), &std::free);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

void SetLayeredStyle(QWidget&, bool) {}

bool SetWindowAlpha(QWidget& window, int opacity) {
    if (!LayeredWindowsAvailable()) return false;
    window.setWindowOpacity(opacity / kOpaque);
    return true;
}

} // namespace quillbay
