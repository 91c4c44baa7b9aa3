#pragma once

#include <functional>

class QAbstractItemView;

namespace quillbay {

/// Calls `clicked` when another row of the list or tree is selected, by whatever means, and when the selected
/// row is pressed again. Not while the view's signals are blocked.
void ConnectRowClicks(QAbstractItemView& view, std::function<void()> clicked);

} // namespace quillbay
