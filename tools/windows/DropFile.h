#pragma once

#include <string>

/// Drags a file from nowhere to the middle of the window in front, with the mouse, and drops it there. False
/// when the window does not take it.
bool DropOnWindowInFront(const std::wstring& file);
