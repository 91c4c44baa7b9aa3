#include "effects/FadeSteps.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr int kOpaque = 255;
constexpr int kDefaultBetweenStep = 10;

int ToOpacity(int value) { return std::clamp(value, 0, kOpaque); }

double Area(EffectSize size) {
    return static_cast<double>(std::max(size.width, 0)) * static_cast<double>(std::max(size.height, 0));
}

double ScaledSpeed(int speed, EffectSize window, EffectSize mainWindow) {
    const double mainArea = Area(mainWindow);
    return mainArea > 0 ? speed * Area(window) / mainArea : speed;
}

/// At least 1; beyond the opaque value the size of a step makes no difference.
int ToStep(double step) { return static_cast<int>(std::clamp(step, 1.0, kOpaque + 1.0)); }

std::vector<int> StepDown(int from, int to, int step) {
    std::vector<int> steps;
    for (int opacity = from; opacity >= to; opacity -= step)
        steps.push_back(opacity);
    return steps;
}

std::vector<int> StepUp(int from, int to, int step) {
    std::vector<int> steps;
    for (int opacity = from; opacity <= to; opacity += step)
        steps.push_back(opacity);
    return steps;
}

} // namespace

std::vector<int> FadeInSteps(int target, int speed, EffectSize window, EffectSize mainWindow) {
    const int end = ToOpacity(target) == 0 ? kOpaque : ToOpacity(target);
    return StepUp(1, end, ToStep(std::floor(ScaledSpeed(speed, window, mainWindow))));
}

std::vector<int> FadeOutSteps(int intensity, int speed, EffectSize window, EffectSize mainWindow) {
    return StepDown(ToOpacity(intensity), 1, ToStep(std::ceil(ScaledSpeed(speed, window, mainWindow))));
}

std::vector<int> FadeBetweenSteps(int from, int to, int step) {
    const int start = ToOpacity(from);
    const int end = ToOpacity(to);
    const int size = step <= 0 ? kDefaultBetweenStep : std::min(step, kOpaque + 1);
    return start > end ? StepDown(start, end, size) : StepUp(start, end, size);
}

std::vector<PixelSize> SmoothCloseSizes(PixelSize start, PixelSize minimum, ClosingSwitches switches) {
    // What an axis can lose; pixels stand for the twips that the effect counts, as only they can be seen.
    const int lines = switches.yAxis ? std::max(start.height - std::max(minimum.height, 0), 0) : 0;
    const int columns = switches.xAxis ? std::max(start.width - std::max(minimum.width, 0), 0) : 0;
    std::vector<PixelSize> sizes;
    if (switches.simultaneous) {
        for (int lost = 1; lost <= std::max(lines, columns); ++lost) {
            sizes.push_back({start.width - std::min(lost, columns), start.height - std::min(lost, lines)});
        }
        return sizes;
    }
    for (int lost = 1; lost <= lines; ++lost)
        sizes.push_back({start.width, start.height - lost});
    for (int lost = 1; lost <= columns; ++lost)
        sizes.push_back({start.width - lost, start.height - lines});
    return sizes;
}

} // namespace quillbay
