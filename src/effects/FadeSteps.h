#pragma once

#include <vector>

/// The opacities and sizes that the window effects step through. Opacities are 0 (invisible) to 255.
namespace quillbay {

struct PixelSize {
    int width;
    int height;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// 1, 1 + step, ... up to the target (0 counts as 255). The step is `speed` times the window's area over the
/// main window's, rounded down, at least 1. A main window without area counts as one of the window's size.
std::vector<int> FadeInSteps(int target, int speed, PixelSize window, PixelSize mainWindow);

/// `intensity`, intensity - step, ... down to 1; nothing when the intensity is 0. The step is rounded up.
std::vector<int> FadeOutSteps(int intensity, int speed, PixelSize window, PixelSize mainWindow);

/// from, ... in steps of `step` (0 counts as 10) towards `to`, the last one not beyond it.
std::vector<int> FadeBetweenSteps(int from, int to, int step);

/// Which way a window shrinks while it closes.
struct ClosingSwitches {
    bool xAxis = true;
    bool yAxis = true;
    bool simultaneous = false;
};

/// The sizes that a window takes while it closes smoothly, without the one it starts with: down to one pixel,
/// height first, then width, or both at once. Empty when both axes are off.
std::vector<PixelSize> SmoothCloseSizes(PixelSize start, ClosingSwitches switches);

} // namespace quillbay
