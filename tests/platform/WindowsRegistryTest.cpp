#include "platform/Registry.h"

#include <gtest/gtest.h>
#include <string_view>
#include <windows.h>

namespace quillbay::test {
namespace {

constexpr char kKey[] = "Software\\Quillbay Tests\\Reader";

class WindowsRegistryTest : public testing::Test {
protected:
    WindowsRegistryTest() { RemoveKeys(); }
    ~WindowsRegistryTest() override { RemoveKeys(); }

    static void RemoveKeys() {
        for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY}) {
            RegDeleteKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillbay Tests\\Reader", view, 0);
            RegDeleteKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillbay Tests", view, 0);
        }
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

    std::string Read(std::string_view name) { return registry_->ReadRegistryString(kKey, name, "none"); }

    std::unique_ptr<Registry> registry_ = MakeRegistry();
};

TEST_F(WindowsRegistryTest, ReadsBothViewsTheWiderFirst) {
    EXPECT_EQ(Read("INSTALLPATH"), "none");
    Put(KEY_WOW64_32KEY, L"INSTALLPATH", REG_SZ, L"C:\\Old");
    EXPECT_EQ(Read("INSTALLPATH"), "C:\\Old");
    Put(KEY_WOW64_64KEY, L"Other", REG_SZ, L"x");
    EXPECT_EQ(Read("INSTALLPATH"), "C:\\Old");
    Put(KEY_WOW64_64KEY, L"INSTALLPATH", REG_SZ, L"C:\\New\\");
    EXPECT_EQ(Read("InstallPath"), "C:\\New\\");
    EXPECT_EQ(registry_->ReadRegistryString("SOFTWARE\\quillbay TESTS\\reader", "other"), "x");
}

TEST_F(WindowsRegistryTest, TakesOnlyPlainStringsUpToTheirFirstNul) {
    Put(KEY_WOW64_64KEY, L"Nul", REG_SZ, std::wstring_view(L"C:\\G\u00E4mes\0rest\0", 13));
    Put(KEY_WOW64_64KEY, L"Unterminated", REG_SZ, std::wstring_view(L"C:\\Games", 8));
    Put(KEY_WOW64_64KEY, L"Empty", REG_SZ, {});
    Put(KEY_WOW64_64KEY, L"Expand", REG_EXPAND_SZ, L"%windir%");
    Put(KEY_WOW64_64KEY, L"Number", REG_DWORD, L"ab");
    Put(KEY_WOW64_64KEY, L"Long", REG_SZ, std::wstring(5000, L'x'));

    EXPECT_EQ(Read("Nul"), "C:\\G\xC3\xA4mes");
    EXPECT_EQ(Read("Unterminated"), "C:\\Games");
    EXPECT_EQ(Read("Empty"), "");
    EXPECT_EQ(Read("Expand"), "none");
    EXPECT_EQ(Read("Number"), "none");
    Put(KEY_WOW64_32KEY, L"Number", REG_SZ, L"text");
    EXPECT_EQ(Read("Number"), "text");
    EXPECT_EQ(Read("Long"), std::string(5000, 'x'));
}

} // namespace
} // namespace quillbay::test
