/// @file
/// A small store of settings for each user: keys in a tree, each with named values.
///
/// It lies in one file of the user's configuration folder, registry/current-user.ini, which may be read and
/// edited by hand. Several processes may use it at once; each change is written before the call returns,
/// whole or not at all. Where the file cannot be read the store is empty; one that is damaged is set aside as
/// current-user.ini.damaged before the next change. Any thread may call.
///
/// Names of keys and values are compared without regard to the case of ASCII letters. A path is names parted
/// by backslashes. Every call returns ERROR_SUCCESS or the error; GetLastError is not touched.
#pragma once

#include <platform/types.h>

enum : DWORD { ERROR_MORE_DATA = 234 };

using HKEY = Handle<struct RegistryKeyTag>;
using LSTATUS = LONG;
using REGSAM = DWORD;

/// The root of all keys. It is always open.
inline constexpr HKEY HKEY_CURRENT_USER{0x80000001, 0x80000001};

/// What a value claims to be; its bytes are kept as they are given.
enum : DWORD { REG_NONE = 0, REG_SZ = 1, REG_EXPAND_SZ = 2, REG_BINARY = 3, REG_DWORD = 4 };

/// What a key is opened for. Other bits are ignored.
enum : REGSAM {
    KEY_QUERY_VALUE = 0x0001,
    KEY_SET_VALUE = 0x0002,
    KEY_READ = 0x20019,
    KEY_WRITE = 0x20006,
    KEY_ALL_ACCESS = 0xF003F,
};
enum : DWORD { REG_OPTION_NON_VOLATILE = 0 };
enum : DWORD { REG_CREATED_NEW_KEY = 1, REG_OPENED_EXISTING_KEY = 2 };  ///< dispositions

/// ERROR_FILE_NOT_FOUND when there is no such key. An empty path opens the key itself once more.
PLATFORM_API LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD options, REGSAM access, HKEY* opened);

/// Opens a key, and makes it and those above it where they are missing. `type` and `security` are ignored;
/// `disposition` may be null. ERROR_ACCESS_DENIED when the file cannot be written.
PLATFORM_API LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR type, DWORD options,
                                     REGSAM access, const void* security, HKEY* opened, DWORD* disposition);

/// The value of a name; null or empty names the key's own. `size` is the room in bytes, and then what the
/// value takes. ERROR_MORE_DATA when there is not enough room; without `data` only type and size are told. A
/// text comes with its terminator if it was set with one. ERROR_FILE_NOT_FOUND when there is no such value.
PLATFORM_API LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                                      DWORD* size);

/// At most 1 MiB. ERROR_ACCESS_DENIED when the key was not opened for it, or the file cannot be written.
PLATFORM_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                    DWORD size);
PLATFORM_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name);

/// Nothing waits to be written: tells only whether the key is open.
PLATFORM_API LSTATUS RegFlushKey(HKEY key);
PLATFORM_API LSTATUS RegCloseKey(HKEY key);
