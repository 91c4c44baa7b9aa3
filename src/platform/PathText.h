#pragma once

#include <string>
#include <string_view>

/// Paths as text. Every function knows both separators, `\` and `/`, and touches no disk.
namespace quillbay {

constexpr bool IsSeparator(char c) { return c == '\\' || c == '/'; }

/// `base` and `rest` with exactly one separator between them; `base` alone decides nothing else: an empty
/// `base` gives `rest`, an empty `rest` gives `base`.
std::string Join(std::string_view base, std::string_view rest);

/// What stands after the last separator; the whole text when there is none, empty after a final separator.
std::string_view LastComponent(std::string_view path);

/// What stands before the last separator; empty when there is none. Final separators are passed over
/// first, so that the parent of `a\b\` is `a`.
std::string_view Parent(std::string_view path);

/// `path` without its final separators (a lone root keeps its one).
std::string_view WithoutFinalSeparators(std::string_view path);

} // namespace quillbay
