#include "platform/posix/NativePath.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <vector>

namespace quillbay {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

OpenFolder OpenForLookUp(const std::string& path) {
    return OpenFolder(::opendir(path.empty() ? "." : path.c_str()));
}

/// The stored name that `component` finds in a folder; empty when there is none.
std::string FindInFolder(DIR* folder, const std::string& component) {
    std::string found;
    while (const dirent* entry = ::readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name == component) return component;
        if (found.empty() && EqualFolded(name, component)) found = name;
    }
    return found;
}

std::vector<std::string> Split(const std::string& path) {
    std::vector<std::string> components;
    for (std::size_t at = 0; at < path.size();) {
        const auto end = std::min(path.find('/', at), path.size());
        if (end > at) components.push_back(path.substr(at, end - at));
        at = end + 1;
    }
    return components;
}

/// The first `count` components; empty for the current folder.
std::string JoinFirst(bool absolute, const std::vector<std::string>& components, std::size_t count) {
    std::string path = absolute ? "/" : "";
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) path += '/';
        path += components[i];
    }
    return path;
}

bool Exists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

} // namespace

Result<std::string> ToNativePath(std::string_view path) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return std::errc::invalid_argument;
    std::string native(WithoutFinalSeparators(path));
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::optional<std::string> FindSpelling(const std::string& path) {
    const bool absolute = path.starts_with('/');
    const auto components = Split(path);
    if (components.empty()) return std::nullopt;

    // From the end backwards to the longest part that exists: mostly the folder of the last component.
    std::size_t existing = components.size() - 1;
    std::string found = JoinFirst(absolute, components, existing);
    OpenFolder folder = OpenForLookUp(found);
    while (!folder) {
        if (errno != ENOENT || existing == 0) return std::nullopt;
        found = JoinFirst(absolute, components, --existing);
        folder = OpenForLookUp(found);
    }
    // From there forwards with the names that are stored.
    for (std::size_t i = existing; i < components.size(); ++i) {
        const std::string prefix = found.empty() || found == "/" ? found : found + '/';
        if (i > existing) {
            if (Exists(prefix + components[i])) {
                found = prefix + components[i];
                continue;
            }
            folder = OpenForLookUp(found);
            if (!folder) return std::nullopt;
        }
        const std::string stored = FindInFolder(folder.get(), components[i]);
        if (stored.empty()) return std::nullopt;
        found = prefix + stored;
    }
    if (found == JoinFirst(absolute, components, components.size())) return std::nullopt;
    return found;
}

std::optional<std::string> FindParentSpelling(const std::string& path) {
    const auto at = path.rfind('/');
    if (at == std::string::npos || at == 0) return std::nullopt;
    const std::string parent = path.substr(0, at);
    if (Exists(parent)) return std::nullopt;
    auto found = FindSpelling(parent);
    if (found) found->append(path, at);
    return found;
}

Result<std::string> FindArgumentPath(std::string_view path) {
    auto native = ToNativePath(path);
    if (!native) return native.Error();
    struct stat info {};
    const auto error = CallOnEntry(*native, [&](const char* text) { return ::stat(text, &info); });
    if (error) return error;
    return native->starts_with('/') ? *native : "./" + *native;
}

std::string Beside(std::string_view path, std::string_view name) {
    const auto at = path.rfind('/');
    std::string beside(at == std::string_view::npos ? std::string_view{} : path.substr(0, at + 1));
    return beside.append(name);
}

} // namespace quillbay
