#include "web/registry_key.h"

#include <array>
#include <cstring>

namespace qkui {

BOOL CRegistryKey::SetKey(CString subKey) {
    HKEY key;
    lLastError = RegCreateKeyExW(hRootKey, subKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                 nullptr, &key, nullptr);
    if (lLastError != ERROR_SUCCESS) return 0;
    if (!bLazyWrite) RegFlushKey(key);
    RegCloseKey(key);
    strSubKey = subKey;
    return 1;
}

DWORD CRegistryKey::GetValueType(CString name) {
    DWORD type = 0;
    return Read(name, KEY_QUERY_VALUE, &type, nullptr, nullptr) == ERROR_SUCCESS ? type : 0;
}

CString CRegistryKey::ReadString(CString name, CString defaultValue) {
    const DWORD type = GetValueType(name);
    if (type != REG_SZ && type != REG_EXPAND_SZ) return defaultValue;
    constexpr DWORD kRoom = 255;  // bytes
    std::array<WCHAR, kRoom / sizeof(WCHAR) + 2> text{};
    DWORD size = kRoom;
    if (Read(name, KEY_READ, nullptr, reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS)
        return defaultValue;
    return CString(text.data());
}

DWORD CRegistryKey::ReadDword(CString name, DWORD defaultValue) {
    std::array<BYTE, sizeof(DWORD)> bytes{};
    DWORD size = sizeof(DWORD);
    if (Read(name, KEY_READ, nullptr, bytes.data(), &size) != ERROR_SUCCESS) return defaultValue;
    DWORD value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

LSTATUS CRegistryKey::Read(const CString& name, REGSAM access, DWORD* type, BYTE* bytes, DWORD* size) {
    HKEY key;
    lLastError = RegOpenKeyExW(hRootKey, strSubKey, 0, access, &key);
    if (lLastError != ERROR_SUCCESS) return lLastError;
    lLastError = RegQueryValueExW(key, name, nullptr, type, bytes, size);
    RegCloseKey(key);
    return lLastError;
}

}  // namespace qkui
