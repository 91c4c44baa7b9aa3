#include "platform/PathText.h"

namespace quillbay {

namespace {
constexpr std::string_view kSeparators = "\\/";
}

std::string Join(std::string_view base, std::string_view rest) {
    if (base.empty()) return std::string(rest);
    if (rest.empty()) return std::string(base);
    std::string joined;
    joined.reserve(base.size() + 1 + rest.size());
    joined.append(base);
    if (!IsSeparator(joined.back())) joined.push_back('\\');
    joined.append(IsSeparator(rest.front()) ? rest.substr(1) : rest);
    return joined;
}

std::string_view LastComponent(std::string_view path) {
    const auto at = path.find_last_of(kSeparators);
    return at == std::string_view::npos ? path : path.substr(at + 1);
}

std::string_view Parent(std::string_view path) {
    path = WithoutFinalSeparators(path);
    const auto at = path.find_last_of(kSeparators);
    if (at == std::string_view::npos) return {};
    return at == 0 ? path.substr(0, 1) : path.substr(0, at);
}

std::string_view WithoutFinalSeparators(std::string_view path) {
    while (path.size() > 1 && IsSeparator(path.back()))
        path.remove_suffix(1);
    return path;
}

} // namespace quillbay
