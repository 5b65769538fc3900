// cRegistry against the registry functions themselves: what cRegistry writes is read back with
// RegQueryValueExW / RegEnumValueW / RegEnumKeyExW, and what they write is read with cRegistry.
// Each test works below a key of its own in the current user's hive and removes it afterwards.
#include <windows.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "TestSupport.h"
#include "core/hardware/HostPorts.h"
#include "core/support/WindowsText.h"
#include "core/support/cRegistry.h"

namespace arden {
namespace {

class RegistryJudge : public ::testing::Test {
protected:
    void SetUp() override {
        path_ = std::string("Software\\Brackenware\\Judge\\") +
                ::testing::UnitTest::GetInstance()->current_test_info()->name();
        RegDeleteTreeW(HKEY_CURRENT_USER, utf8ToWide(path_).c_str());
        registry_.setClassKey(RegistryRoot::CurrentUser);
        registry_.setSectionKey(path_);
    }
    void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, utf8ToWide(path_).c_str()); }

    // The value as the registry holds it: its type and its data bytes.
    std::pair<DWORD, std::string> raw(const std::string& name) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, utf8ToWide(path_).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
        DWORD type = 0, size = 0;
        std::wstring wname = utf8ToWide(name);
        RegQueryValueExW(key, wname.c_str(), nullptr, &type, nullptr, &size);
        std::string data(size, '\0');
        RegQueryValueExW(key, wname.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size);
        RegCloseKey(key);
        return {type, data};
    }

    void rawWrite(const std::string& sub, const std::string& name, const std::wstring& text) {
        HKEY key = nullptr;
        std::wstring path = utf8ToWide(sub.empty() ? path_ : path_ + "\\" + sub);
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        RegSetValueExW(key, utf8ToWide(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }

    static std::string utf16(const std::wstring& text) {
        std::wstring withEnd = text + L'\0';
        return std::string(reinterpret_cast<const char*>(withEnd.data()), withEnd.size() * sizeof(wchar_t));
    }

    std::string path_;
    cRegistry registry_;
};

// Strings are stored as UTF-16 with their end, double words as four little-endian bytes.
TEST_F(RegistryJudge, ValuesAreStoredAsTheRegistryHoldsThem) {
    const std::tuple<std::string, std::uint32_t, std::string, std::string, std::string> cases[] = {
        {"IniLocation", RegType::String, "C:\\Users\\J\xC3\xB6rg\\Temp\\", utf16(L"C:\\Users\\J\u00F6rg\\Temp\\"), ""},
        {"", RegType::String, "default value", utf16(L"default value"), ""},
        {"Empty", RegType::String, "", utf16(L""), ""},
        {"LanguageOffset", RegType::DWord, "500", std::string("\xF4\x01\x00\x00", 4), ""},
        {"LanguageOffset", RegType::DWord, "-1", std::string("\xFF\xFF\xFF\xFF", 4), "4294967295"},
    };
    for (const auto& [name, type, text, stored, readBack] : cases) {
        SCOPED_TRACE(name + " = " + text);
        registry_.setValueKey(name);
        registry_.setValueType(type);
        ASSERT_FALSE(registry_.setValue(text));
        auto [kind, data] = raw(name);
        EXPECT_EQ(kind, static_cast<DWORD>(type == RegType::String ? REG_SZ : REG_DWORD));
        EXPECT_EQ(data, stored);
        EXPECT_EQ(registry_.Value(), readBack.empty() ? text : readBack);
    }
}

TEST_F(RegistryJudge, WhatTheRegistryFunctionsWroteIsReadAndListed) {
    rawWrite("", "Zeta", L"last");
    rawWrite("", "alpha", L"first");
    rawWrite("Sub B", "x", L"1");
    rawWrite("sub a", "x", L"1");
    registry_.setSectionKey(path_);
    registry_.setValueKey("ZETA");  // value names ignore letter case
    EXPECT_EQ(registry_.Value(), "last");
    // Sub-keys come in the registry's own order, alphabetical without regard to case, on
    // Windows and under Wine alike (our Linux store lists them in the order they were made; no
    // caller shows that order). Values have no order the registry promises (Windows keeps the
    // order they were written in, Wine sorts them), so they are compared as a set.
    EXPECT_EQ(registry_.EnumerateSections(), (std::vector<std::string>{"sub a", "Sub B"}));
    std::vector<std::string> values = registry_.EnumerateValues();
    std::sort(values.begin(), values.end());
    EXPECT_EQ(values, (std::vector<std::string>{"Zeta", "alpha"}));
    registry_.setSectionKey(path_ + "\\SUB B");  // and so do key paths
    EXPECT_TRUE(registry_.KeyExists());
}

TEST_F(RegistryJudge, DeleteKeyRemovesEverythingBelow) {
    rawWrite("Child\\Grandchild", "x", L"1");
    ASSERT_FALSE(registry_.DeleteKey());
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, utf8ToWide(path_).c_str(), 0, KEY_READ, &key),
              static_cast<LONG>(ERROR_FILE_NOT_FOUND));
    auto failure = registry_.DeleteKey();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->text[0].literal, "Failed to open key '" + path_ + "' for delete access");
}

// The host's ports come from the local machine's device maps, as Windows fills them.
TEST(RegistryDeviceMaps, HostPortsAreTheLocalMachinesMappedPorts) {
    struct MapValue {
        const wchar_t* key;
        const wchar_t* name;
        const wchar_t* data;
    };
    const MapValue values[] = {
        {L"HARDWARE\\DEVICEMAP\\SERIALCOMM", L"\\Device\\Serial0", L"COM1"},
        {L"HARDWARE\\DEVICEMAP\\SERIALCOMM", L"\\Device\\Serial1", L"COM3"},
        {L"HARDWARE\\DEVICEMAP\\PARALLEL PORTS", L"\\Device\\Parallel0", L"\\DosDevices\\LPT1"},
    };
    for (const MapValue& v : values) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, v.key, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                  &key, nullptr),
                  ERROR_SUCCESS);
        RegSetValueExW(key, v.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(v.data),
                       static_cast<DWORD>((wcslen(v.data) + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    cRegistry registry;
    HostPorts ports = readHostPorts(registry);
    for (const MapValue& v : values) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, v.key, 0, KEY_SET_VALUE, &key) == ERROR_SUCCESS) {
            RegDeleteValueW(key, v.name);
            RegCloseKey(key);
        }
    }
    EXPECT_EQ(ports.serial, (std::vector<std::string>{"COM1", "COM3"}));
    EXPECT_EQ(ports.parallel, (std::vector<std::string>{"LPT1"}));
}

}  // namespace
}  // namespace arden
