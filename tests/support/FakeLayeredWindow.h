#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

class QWidget;

namespace quillbay::test {

/// Stands in for the layered windows of the platform, which the offscreen one does not have: while such an
/// object lives they exist, and every opacity that a window gets is written down.
class LayeredWindows {
public:
    LayeredWindows() { Current = this; }
    ~LayeredWindows() { Current = nullptr; }
    LayeredWindows(const LayeredWindows&) = delete;
    LayeredWindows& operator=(const LayeredWindows&) = delete;

    void Set(const QWidget& window, int opacity) {
        steps_[&window].push_back(opacity);
        last_[&window] = opacity;
        if (OnOpacity) OnOpacity(opacity);
    }
    /// The opacities of a window since the last call; those of the others are forgotten.
    std::vector<int> Take(const QWidget& window) { return std::exchange(steps_, {})[&window]; }
    /// The last opacity of a window, also one that was taken; -1 when it never got one.
    int Last(const QWidget& window) const { return last_.contains(&window) ? last_.at(&window) : -1; }

    std::function<void(int opacity)> OnOpacity;
    static inline LayeredWindows* Current = nullptr;

private:
    std::map<const QWidget*, std::vector<int>> steps_;
    std::map<const QWidget*, int> last_;
};

} // namespace quillbay::test
