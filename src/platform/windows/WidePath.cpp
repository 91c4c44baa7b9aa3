#include "platform/windows/WidePath.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <vector>
#include <windows.h>

namespace quillbay {

namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kForbidden = L":*?\"<>|";

bool IsWideSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

bool HasDrive(std::wstring_view path) {
    return path.size() >= 2 && path[1] == L':' &&
           ((path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z'));
}

bool IsShare(std::wstring_view path) {
    return path.size() >= 2 && IsWideSeparator(path[0]) && IsWideSeparator(path[1]);
}

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

/// The next component and what stands behind it; empty at the end.
std::wstring_view TakeComponent(std::wstring_view& rest) {
    while (!rest.empty() && IsWideSeparator(rest.front()))
        rest.remove_prefix(1);
    const auto end = std::find_if(rest.begin(), rest.end(), IsWideSeparator);
    const auto component = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(component.size());
    return component;
}

std::wstring Absolute(std::wstring path) {
    if (path.starts_with(kLongShare)) return L"\\\\" + path.substr(kLongShare.size());
    if (path.starts_with(kLongPrefix)) return path.substr(kLongPrefix.size());
    if (HasDrive(path) || IsShare(path)) return path;
    std::wstring current = WithoutLongPrefix(CurrentFolder());
    if (IsWideSeparator(path.front()) && HasDrive(current)) return current.substr(0, 2) + path;
    return current + L'\\' + path;
}

} // namespace

Result<std::wstring> LongPath(std::string_view path) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return std::errc::invalid_argument;
    const std::wstring absolute = Absolute(WidenText(path));
    std::wstring_view rest = absolute;

    std::wstring result;
    if (HasDrive(rest)) {
        result.append(kLongPrefix).append(rest.substr(0, 2));
        rest.remove_prefix(2);
    } else {
        result.append(kLongShare).append(TakeComponent(rest)).append(1, L'\\').append(TakeComponent(rest));
    }
    const std::size_t root = result.size();
    for (auto component = TakeComponent(rest); !component.empty(); component = TakeComponent(rest)) {
        if (component == L".") continue;
        if (component == L"..") {
            if (result.size() > root) result.resize(result.rfind(L'\\'));
            continue;
        }
        if (component.find_first_of(kForbidden) != std::wstring_view::npos)
            return std::errc::no_such_file_or_directory;
        result.append(1, L'\\').append(component);
    }
    if (result.size() == root) result.push_back(L'\\');
    return result;
}

std::wstring WithoutLongPrefix(std::wstring_view longPath) {
    if (longPath.starts_with(kLongShare)) return L"\\\\" + std::wstring(longPath.substr(kLongShare.size()));
    if (longPath.starts_with(kLongPrefix)) longPath.remove_prefix(kLongPrefix.size());
    return std::wstring(longPath);
}

std::wstring InFolder(std::wstring_view longFolder, std::wstring_view name) {
    std::wstring path;
    path.reserve(longFolder.size() + 1 + name.size());
    path.append(longFolder);
    if (path.back() != L'\\') path.push_back(L'\\');
    return path.append(name);
}

std::wstring_view LongParent(std::wstring_view longPath) {
    const auto parent = longPath.substr(0, longPath.rfind(L'\\'));
    return parent.ends_with(L':') ? longPath.substr(0, parent.size() + 1) : parent;
}

std::wstring_view LongName(std::wstring_view longPath) { return longPath.substr(longPath.rfind(L'\\') + 1); }

} // namespace quillbay
