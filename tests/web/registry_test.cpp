// The user's settings: what is kept, what is returned, and what a damaged file does.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <platform/unsuffixed.h>

#include "src/web/registry_key.h"

namespace {

namespace fs = std::filesystem;
using qkui::CRegistryKey;

fs::path StoreFile() {
    return fs::path(std::getenv("XDG_CONFIG_HOME")) / "registry/current-user.ini";
}

class Registry : public testing::Test {
  protected:
    void SetUp() override { fs::remove_all(StoreFile().parent_path()); }
};

HKEY Made(LPCWSTR path, DWORD* disposition = nullptr) {
    HKEY key;
    EXPECT_EQ(
        RegCreateKeyEx(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, disposition),
        0);
    return key;
}

TEST_F(Registry, KeepsValuesAsTheyAre) {
    const HKEY key = Made(u"Software\\Äpfel [1]\\%=#");
    const std::vector<BYTE> cases[] = {
        {}, {1, 2, 3, 4}, {'a', 0, 0, 0}, {'a', 0}, {0, 0xD8, 0, 0}, {'a', 0, 0, 0, 'b', 0, 0, 0}, {1, 2, 3}};
    for (const DWORD type : {0U, 1U, 2U, 3U, 4U, 4000000000U}) {
        for (const auto& bytes : cases) {
            const LPCWSTR name = u" =[]\n;\"ü% ";
            ASSERT_EQ(RegSetValueEx(key, name, 0, type, bytes.data(), static_cast<DWORD>(bytes.size())), 0);
            BYTE read[8];
            DWORD size = sizeof read, stored = 99;
            ASSERT_EQ(RegQueryValueEx(key, name, nullptr, &stored, read, &size), 0);
            EXPECT_EQ(stored, type);
            EXPECT_EQ(std::vector<BYTE>(read, read + size), bytes);
        }
    }
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegCloseKey(key), LSTATUS{ERROR_INVALID_HANDLE});
}

TEST_F(Registry, TellsWhatItLacks) {
    DWORD disposition = 0;
    const HKEY key = Made(u"Software\\One", &disposition);
    EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
    Made(u"software\\\\ONE\\", &disposition);
    EXPECT_EQ(disposition, DWORD{REG_OPENED_EXISTING_KEY});
    HKEY other;
    EXPECT_EQ(RegOpenKeyEx(HKEY_CURRENT_USER, u"Software", 0, KEY_READ, &other), 0);
    EXPECT_EQ(RegOpenKeyEx(other, u"Two", 0, KEY_READ, &other), LSTATUS{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(RegSetValueEx(other, u"v", 0, REG_BINARY, nullptr, 0), LSTATUS{ERROR_ACCESS_DENIED});
    EXPECT_EQ(RegSetValueEx(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(u"ab"), 6), 0);
    BYTE bytes[6];
    DWORD size = 5, type = 0;
    EXPECT_EQ(RegQueryValueEx(key, u"", nullptr, &type, bytes, &size), LSTATUS{ERROR_MORE_DATA});
    EXPECT_EQ(size, 6U);
    EXPECT_EQ(RegQueryValueEx(key, u"none", nullptr, &type, bytes, &size), LSTATUS{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(RegDeleteValue(key, u""), 0);
    EXPECT_EQ(RegDeleteValue(key, u""), LSTATUS{ERROR_FILE_NOT_FOUND});
}

TEST_F(Registry, KeysAnswerWithTheirDefaults) {
    CRegistryKey key;
    EXPECT_EQ(key.ReadDword(u"n", 5), 5U);
    ASSERT_TRUE(key.SetKey(u"Software\\Test"));
    const HKEY open = Made(u"Software\\Test");
    const auto set = [open](LPCWSTR name, DWORD type, const std::u16string& text) {
        RegSetValueEx(open, name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                      static_cast<DWORD>(2 * text.size() + 2));
    };
    set(u"text", REG_SZ, u"grün");
    set(u"expanded", REG_EXPAND_SZ, u"%HOME%");
    set(u"binary", REG_BINARY, u"b");
    set(u"longest", REG_SZ, std::u16string(126, u'x'));
    set(u"too long", REG_SZ, std::u16string(127, u'x'));
    EXPECT_EQ(key.ReadString(u"text", u"-"), u"grün");
    EXPECT_EQ(key.ReadString(u"expanded", u"-"), u"%HOME%");
    EXPECT_EQ(key.ReadString(u"binary", u"-"), u"-");
    EXPECT_EQ(key.ReadString(u"longest", u"-").GetLength(), 126);
    EXPECT_EQ(key.ReadString(u"too long", u"-"), u"-");
    EXPECT_EQ(key.ReadDword(u"text", 5), 5U);
    EXPECT_EQ(key.lLastError, LSTATUS{ERROR_MORE_DATA});
    EXPECT_EQ(key.ReadDword(u"binary", 5), DWORD{u'b'});  // whatever its type
    EXPECT_EQ(key.GetValueType(u"expanded"), DWORD{REG_EXPAND_SZ});
}

TEST_F(Registry, AFileThatIsNoStoreIsHarmless) {
    fs::create_directories(StoreFile().parent_path());
    const auto expectEmptyAndUsable = [](const std::string& what) {
        SCOPED_TRACE(what);
        CRegistryKey key;
        EXPECT_EQ(key.ReadDword(u"v", 5), 5U);
        EXPECT_TRUE(key.SetKey(u"Software"));
        EXPECT_TRUE(fs::exists(StoreFile().string() + ".damaged"));
        fs::remove_all(StoreFile().parent_path());
        fs::create_directories(StoreFile().parent_path());
    };
    for (const std::string& bytes : {std::string("no store"), std::string("[a\nb=c")}) {
        std::ofstream(StoreFile()) << bytes;
        expectEmptyAndUsable(bytes.substr(0, 8));
    }
    fs::create_directory(StoreFile());
    expectEmptyAndUsable("a folder");
    std::ofstream(StoreFile())
        << "[software]\nv=dword:12x\nw=hex(1):0\nx=hex(1\ny=dword:99999999999\nz=dword:7\n";
    CRegistryKey key;
    ASSERT_TRUE(key.SetKey(u"Software"));
    for (const LPCWSTR name : {u"v", u"w", u"x", u"y"})
        EXPECT_EQ(key.GetValueType(name), 0U) << ToUtf8(name);
    EXPECT_EQ(key.ReadDword(u"z", 5), 7U);
    EXPECT_FALSE(fs::exists(StoreFile().string() + ".damaged"));
    // Nowhere to write.
    fs::remove_all(StoreFile().parent_path());
    std::ofstream(StoreFile().parent_path()) << "in the way";
    EXPECT_FALSE(CRegistryKey().SetKey(u"Software"));
}

TEST_F(Registry, ThreadsLoseNothing) {
    std::vector<std::thread> threads;
    for (char16_t name = u'a'; name < u'e'; ++name)
        threads.emplace_back([name] {
            const HKEY key = Made(u"Software\\Threads");
            for (BYTE i = 0; i < 20; ++i) {
                const WCHAR text[] = {name, static_cast<WCHAR>(u'a' + i), 0};
                EXPECT_EQ(RegSetValueEx(key, text, 0, REG_BINARY, &i, 1), 0);
            }
            RegCloseKey(key);
        });
    for (std::thread& thread : threads)
        thread.join();
    const HKEY key = Made(u"Software\\Threads");
    for (char16_t name = u'a'; name < u'e'; ++name)
        for (BYTE i = 0; i < 20; ++i) {
            const WCHAR text[] = {name, static_cast<WCHAR>(u'a' + i), 0};
            EXPECT_EQ(RegQueryValueEx(key, text, nullptr, nullptr, nullptr, nullptr), 0);
        }
    RegCloseKey(key);
}

}  // namespace
