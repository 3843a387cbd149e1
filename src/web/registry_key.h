// One key of the registry, opened for each question anew.
#pragma once

#include <platform/registry.h>
#include <platform/text.h>

namespace qkui {

struct CRegistryKey {
    LSTATUS lLastError = 0;
    HKEY hRootKey = HKEY_CURRENT_USER;
    BOOL bLazyWrite = 1;  // 0 flushes a key that was made
    CString strSubKey;

    // Makes the key where it is missing. On failure it returns 0, and the key before stays the one.
    BOOL SetKey(CString subKey);
    // The type of a value, 0 when there is none.
    DWORD GetValueType(CString name);
    // A text of at most 255 bytes; the default for anything else.
    CString ReadString(CString name, CString defaultValue);
    // The first four bytes of a value that has no more; the default where there is none.
    DWORD ReadDword(CString name, DWORD defaultValue);

  private:
    LSTATUS Read(const CString& name, REGSAM access, DWORD* type, BYTE* bytes, DWORD* size);
};

}  // namespace qkui
