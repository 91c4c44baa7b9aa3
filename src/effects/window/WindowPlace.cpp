#include "effects/window/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <limits>

namespace quillbay {

namespace {

/// The part of a title bar that a hand needs.
constexpr QSize kGrip{80, 16};

QPoint NearestPlace(const QRect& frame, const QRect& screen) {
    const auto nearest = [](int edge, int first, int last) { return std::max(std::min(edge, last), first); };
    return {nearest(frame.x(), screen.x(), screen.x() + screen.width() - frame.width()),
            nearest(frame.y(), screen.y(), screen.y() + screen.height() - frame.height())};
}

} // namespace

QPoint PlaceOnScreens(const QRect& frame, const QList<QRect>& screens) {
    const QRect titleBar(frame.topLeft(), QSize(frame.width(), kGrip.height()));
    QPoint best = frame.topLeft();
    int shortest = std::numeric_limits<int>::max();
    for (const QRect& screen : screens) {
        const QSize seen = titleBar.intersected(screen).size();
        if (seen.height() == kGrip.height() && seen.width() >= std::min(kGrip.width(), frame.width()))
            return frame.topLeft();
        const QPoint place = NearestPlace(frame, screen);
        const int distance = (place - frame.topLeft()).manhattanLength();
        if (distance < shortest) {
            shortest = distance;
            best = place;
        }
    }
    return best;
}

QList<QRect> AvailableScreens() {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    return screens;
}

} // namespace quillbay
