#include "platform/Registry.h"

#include "platform/windows/WideText.h"

#include <cstring>
#include <optional>
#include <vector>
#include <windows.h>

namespace quillbay {

namespace {

class OpenKey {
public:
    OpenKey(const std::wstring& name, REGSAM view) {
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, KEY_QUERY_VALUE | view, &key_) !=
            ERROR_SUCCESS)
            key_ = nullptr;
    }
    OpenKey(const OpenKey&) = delete;
    ~OpenKey() {
        if (key_) RegCloseKey(key_);
    }

    /// The bytes of a value with their type; none when it is missing.
    struct Value {
        DWORD type = REG_NONE;
        std::vector<BYTE> bytes;
    };
    std::optional<Value> Read(const std::wstring& name) const {
        if (!key_) return std::nullopt;
        Value value;
        for (;;) {
            auto size = static_cast<DWORD>(value.bytes.size());
            const LSTATUS status =
                RegQueryValueExW(key_, name.c_str(), nullptr, &value.type, value.bytes.data(), &size);
            const bool complete = size <= value.bytes.size();
            value.bytes.resize(size);
            if (status == ERROR_SUCCESS && complete) return value;
            // The value may grow between the question for its size and the reading.
            if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return std::nullopt;
        }
    }

private:
    HKEY key_ = nullptr;
};

std::string ToText(const std::vector<BYTE>& bytes) {
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return NarrowText(std::wstring_view(text).substr(0, text.find(L'\0')));
}

class WindowsRegistry : public Registry {
public:
    std::string ReadRegistryString(std::string_view key, std::string_view valueName,
                                   std::string_view fallback) const override {
        const std::wstring keyName = WidenText(key);
        const std::wstring name = WidenText(valueName);
        for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY}) {
            const auto value = OpenKey(keyName, view).Read(name);
            if (value && value->type == REG_SZ) return ToText(value->bytes);
        }
        return std::string(fallback);
    }
};

} // namespace

std::unique_ptr<Registry> MakeRegistry() { return std::make_unique<WindowsRegistry>(); }

} // namespace quillbay
