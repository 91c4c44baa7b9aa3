#pragma once

#include <functional>
#include <vector>

class QWidget;

namespace quillbay::test {

/// Stands in for the layered windows of the platform, which the offscreen one does not have: while such an
/// object lives they exist, and every opacity that a window gets is written down.
class LayeredWindows {
public:
    LayeredWindows();
    ~LayeredWindows();
    LayeredWindows(const LayeredWindows&) = delete;
    LayeredWindows& operator=(const LayeredWindows&) = delete;

    void Set(const QWidget& window, int opacity);
    /// The opacities of a window since the last call.
    std::vector<int> Take(const QWidget& window);
    /// The last opacity of a window, also one that was taken.
    int Last(const QWidget& window) const;

    std::function<void(int opacity)> OnOpacity;

private:
    struct Step {
        const QWidget* window;
        int opacity;
    };
    std::vector<Step> steps_;
    std::size_t taken_ = 0;
};

} // namespace quillbay::test
