#include "effects/FadeSteps.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr int kOpaque = 255;
constexpr int kDefaultBetweenStep = 10;

int ToOpacity(int value) { return std::clamp(value, 0, kOpaque); }

double Area(PixelSize size) { return static_cast<double>(size.width) * size.height; }

double ScaledSpeed(int speed, PixelSize window, PixelSize mainWindow) {
    const double mainArea = Area(mainWindow);
    return mainArea > 0 ? speed * Area(window) / mainArea : speed;
}

/// At least 1; beyond the opaque value the size of a step makes no difference.
int ToStep(double step) { return static_cast<int>(std::clamp(step, 1.0, kOpaque + 1.0)); }

/// A negative step goes down.
std::vector<int> Steps(int from, int to, int step) {
    std::vector<int> steps;
    for (int opacity = from; step > 0 ? opacity <= to : opacity >= to; opacity += step)
        steps.push_back(opacity);
    return steps;
}

} // namespace

std::vector<int> FadeInSteps(int target, int speed, PixelSize window, PixelSize mainWindow) {
    const int end = ToOpacity(target) == 0 ? kOpaque : ToOpacity(target);
    return Steps(1, end, ToStep(std::floor(ScaledSpeed(speed, window, mainWindow))));
}

std::vector<int> FadeOutSteps(int intensity, int speed, PixelSize window, PixelSize mainWindow) {
    return Steps(ToOpacity(intensity), 1, -ToStep(std::ceil(ScaledSpeed(speed, window, mainWindow))));
}

std::vector<int> FadeBetweenSteps(int from, int to, int step) {
    const int start = ToOpacity(from);
    const int end = ToOpacity(to);
    const int size = ToStep(step <= 0 ? kDefaultBetweenStep : step);
    return Steps(start, end, start > end ? -size : size);
}

std::vector<PixelSize> SmoothCloseSizes(PixelSize start, ClosingSwitches switches) {
    // Pixels stand for the twips that the effect counts, as only they can be seen.
    const PixelSize end{switches.xAxis ? std::min(start.width, 1) : start.width,
                        switches.yAxis ? std::min(start.height, 1) : start.height};
    std::vector<PixelSize> sizes;
    for (PixelSize size = start; size != end; sizes.push_back(size)) {
        const bool isHigher = size.height > end.height;
        if (size.width > end.width && (switches.simultaneous || !isHigher)) --size.width;
        if (isHigher) --size.height;
    }
    return sizes;
}

} // namespace quillbay
