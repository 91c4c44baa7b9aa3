#include "platform/Registry.h"

#include <gtest/gtest.h>
#include <string_view>
#include <windows.h>

namespace quillbay::test {
namespace {

class WindowsRegistryTest : public testing::Test {
protected:
    WindowsRegistryTest() { RemoveKeys(); }
    ~WindowsRegistryTest() override { RemoveKeys(); }

    static void RemoveKeys() {
        for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY})
            for (const wchar_t* key : {L"Software\\Quillbay Tests\\Reader", L"Software\\Quillbay Tests"})
                RegDeleteKeyExW(HKEY_LOCAL_MACHINE, key, view, 0);
    }

    static void Put(REGSAM view, const wchar_t* name, DWORD type, std::wstring_view data) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillbay Tests\\Reader", 0, nullptr, 0,
                                  KEY_SET_VALUE | view, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }

    static std::string Read(std::string_view name) {
        return MakeRegistry()->ReadRegistryString("SOFTWARE\\Quillbay TESTS\\Reader", name, "none");
    }
};

TEST_F(WindowsRegistryTest, ReadsPlainStringsOfBothViewsTheWiderFirst) {
    EXPECT_EQ(Read("INSTALLPATH"), "none");
    const std::wstring nul(L"C:\\G\u00E4mes\0rest\0", 13);
    const std::wstring longText(5000, L'x');
    for (const auto& [view, type, data, expected] :
         {std::tuple{KEY_WOW64_32KEY, REG_SZ, std::wstring_view(L"C:\\Old\\"), std::string("C:\\Old\\")},
          {KEY_WOW64_64KEY, REG_DWORD, std::wstring_view(L"ab"), "C:\\Old\\"},
          {KEY_WOW64_64KEY, REG_EXPAND_SZ, std::wstring_view(L"%windir%"), "C:\\Old\\"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(nul), "C:\\G\u00E4mes"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(L"without NUL"), "without NUL"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(), ""},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(longText), std::string(5000, 'x')}}) {
        Put(static_cast<REGSAM>(view), L"InstallPath", static_cast<DWORD>(type), data);
        EXPECT_EQ(Read("INSTALLPATH"), expected);
    }
}

} // namespace
} // namespace quillbay::test
