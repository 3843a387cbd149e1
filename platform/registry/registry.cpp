// The calls of <platform/registry.h>.
#include <platform/registry.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <new>

#include "platform/base/handle_table.h"
#include "platform/registry/registry_file.h"

namespace {

using platform::RegistryFile;
using platform::RegistryValue;
using platform::RegistryWriteLock;

constexpr DWORD kMostBytes = 1024 * 1024;

struct OpenKey {
    std::u16string path;
    REGSAM access;
};

class OpenKeys {
  public:
    // Nothing for a key that is not open.
    std::shared_ptr<OpenKey> Find(HKEY key) {
        if (key == HKEY_CURRENT_USER)
            return std::make_shared<OpenKey>(OpenKey{std::u16string(), KEY_ALL_ACCESS});
        const std::lock_guard lock(mutex_);
        return table_.Share(key);
    }
    HKEY Add(std::u16string path, REGSAM access) {
        auto key = std::make_shared<OpenKey>(OpenKey{std::move(path), access});
        const std::lock_guard lock(mutex_);
        return table_.Insert(std::move(key));
    }
    bool Remove(HKEY key) {
        const std::lock_guard lock(mutex_);
        return table_.Remove(key) != nullptr;
    }

  private:
    std::mutex mutex_;
    platform::HandleTable<HKEY, OpenKey> table_;
};

OpenKeys& Keys() {
    static OpenKeys keys;
    return keys;
}

std::u16string Below(const OpenKey& key, LPCWSTR path) {
    return path ? key.path + u'\\' + path : key.path;
}

// A change, seen by other threads and processes before or after it, never between.
template <class Change>
LSTATUS Write(Change change) {
    const RegistryWriteLock lock;
    if (!lock.IsHeld()) return ERROR_ACCESS_DENIED;
    RegistryFile file;
    const LSTATUS result = change(file);
    if (result != ERROR_SUCCESS) return result;
    if (!file.Write()) return ERROR_ACCESS_DENIED;
    return ERROR_SUCCESS;
}

// No call throws.
template <class Call>
LSTATUS Guarded(Call call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

LSTATUS GiveOut(const RegistryValue& value, DWORD* type, BYTE* data, DWORD* size) {
    const auto needed = static_cast<DWORD>(value.bytes.size());
    const DWORD room = data ? *size : 0;
    if (type) *type = value.type;
    if (size) *size = needed;
    if (!data) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    std::copy(value.bytes.begin(), value.bytes.end(), data);
    return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD, REGSAM access, HKEY* opened) {
    if (!opened) return ERROR_INVALID_PARAMETER;
    return Guarded([&]() -> LSTATUS {
        const auto above = Keys().Find(key);
        if (!above) return ERROR_INVALID_HANDLE;
        std::u16string whole = Below(*above, path);
        if (!RegistryFile().HasKey(platform::PathText(whole))) return ERROR_FILE_NOT_FOUND;
        *opened = Keys().Add(std::move(whole), access);
        return ERROR_SUCCESS;
    });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR path, DWORD, LPWSTR, DWORD, REGSAM access, const void*,
                        HKEY* opened, DWORD* disposition) {
    if (!opened) return ERROR_INVALID_PARAMETER;
    return Guarded([&]() -> LSTATUS {
        const auto above = Keys().Find(key);
        if (!above) return ERROR_INVALID_HANDLE;
        std::u16string whole = Below(*above, path);
        const std::string name = platform::PathText(whole);
        const bool there = RegistryFile().HasKey(name);
        if (!there) {
            const LSTATUS result = Write([&](RegistryFile& file) -> LSTATUS {
                file.AddKey(name);
                return ERROR_SUCCESS;
            });
            if (result != ERROR_SUCCESS) return result;
        }
        *opened = Keys().Add(std::move(whole), access);
        if (disposition) *disposition = there ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
        return ERROR_SUCCESS;
    });
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
    if (data && !size) return ERROR_INVALID_PARAMETER;
    return Guarded([&]() -> LSTATUS {
        const auto open = Keys().Find(key);
        if (!open) return ERROR_INVALID_HANDLE;
        if (!(open->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
        const auto value =
            RegistryFile().Find(platform::PathText(open->path), platform::NameText(name ? name : u""));
        return value ? GiveOut(*value, type, data, size) : LSTATUS{ERROR_FILE_NOT_FOUND};
    });
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if ((size > 0 && !data) || size > kMostBytes) return ERROR_INVALID_PARAMETER;
    return Guarded([&]() -> LSTATUS {
        const auto open = Keys().Find(key);
        if (!open) return ERROR_INVALID_HANDLE;
        if (!(open->access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
        const RegistryValue value{type, std::vector<BYTE>(data, data + size)};
        return Write([&](RegistryFile& file) -> LSTATUS {
            file.Set(platform::PathText(open->path), platform::NameText(name ? name : u""), value);
            return ERROR_SUCCESS;
        });
    });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) {
    return Guarded([&]() -> LSTATUS {
        const auto open = Keys().Find(key);
        if (!open) return ERROR_INVALID_HANDLE;
        if (!(open->access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
        return Write([&](RegistryFile& file) -> LSTATUS {
            const bool gone =
                file.Remove(platform::PathText(open->path), platform::NameText(name ? name : u""));
            return gone ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
        });
    });
}

LSTATUS RegFlushKey(HKEY key) {
    return Guarded([&]() -> LSTATUS { return Keys().Find(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE; });
}

LSTATUS RegCloseKey(HKEY key) {
    if (key == HKEY_CURRENT_USER) return ERROR_SUCCESS;
    return Keys().Remove(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}
