#pragma once

#include <QList>
#include <QRect>

namespace quillbay {

/// Where a window's frame goes that was at this place, in pixels: there, if enough of its title bar is on one
/// of the screens to be grasped, else to the nearest place on the nearest screen where as much as fits of it
/// is seen. Without screens it stays.
QPoint PlaceOnScreens(const QRect& frame, const QList<QRect>& screens);

/// What windows may cover of each screen that there is now.
QList<QRect> AvailableScreens();

} // namespace quillbay
