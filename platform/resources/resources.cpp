// The modules known to the process, and the handles given out for their resources.
#include <platform/resources.h>

#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/base/global_memory.h"
#include "platform/base/handle_table.h"
#include "platform/base/log.h"
#include "platform/resources/module_file.h"
#include "platform/resources/resource_module.h"

namespace platform {
namespace {

// What an HRSRC stands for. The resource lies in its module, which outlives the handle.
struct FoundResource {
    HMODULE module;
    ResourceModule::Resource* resource;
};

// Locked for every call: plugins register from whichever thread loads them.
struct Registry {
    std::mutex mutex;
    HandleTable<HMODULE, ResourceModule> modules;
    HandleTable<HRSRC, FoundResource> found;
    std::vector<HMODULE> order;  // the program's own, then the others, each oldest first
    HMODULE chosen;

    void Add(HMODULE module) {
        const auto isProgram = [this](HMODULE known) {
            const auto& object = modules.Find(known)->Object();
            return object && object->isProgram;
        };
        // A library that the program links is loaded before it, and yet the program is the host.
        const auto place =
            isProgram(module) ? std::find_if_not(order.begin(), order.end(), isProgram) : order.end();
        order.insert(place, module);
    }

    // The chosen module while it lives, else the first.
    HMODULE Current() const {
        if (modules.Find(chosen)) return chosen;
        return order.empty() ? HMODULE() : order.front();
    }

    // Null with the last error for a stale handle or one of another module.
    FoundResource* Live(HMODULE module, HRSRC resource) const {
        FoundResource* live = found.Find(resource);
        if (live && (!module || module == live->module)) return live;
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
};

// Never destroyed: modules register and unregister while static objects are made and destroyed.
Registry& TheRegistry() {
    static Registry* const registry = new Registry;
    return *registry;
}

// What follows a file in a path that leads into it; empty when it does not.
std::optional<std::string> RestBehind(const std::string& path, const std::string& file) {
    if (file.empty() || !path.starts_with(file + "/")) return std::nullopt;
    return path.substr(file.size() + 1);
}

}  // namespace

std::optional<FileInModule> FindModuleOfPath(const std::string& path) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    std::vector<HMODULE> order{registry.Current()};
    order.insert(order.end(), registry.order.begin(), registry.order.end());
    for (const HMODULE module : order) {
        const ResourceModule* const found = registry.modules.Find(module);
        if (!found || !found->Object()) continue;
        const std::string& file = found->Object()->path;
        std::optional<std::string> rest = RestBehind(path, file);
        if (!rest) rest = RestBehind(path, file.substr(file.rfind('/') + 1));
        if (rest) return FileInModule{module, *rest};
    }
    return std::nullopt;
}

}  // namespace platform

using platform::Registry;
using platform::TheRegistry;

HMODULE RegisterModuleResources(const void* data, std::size_t size) {
    if (!data) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const auto entries = platform::ParseResourceFile({static_cast<const std::byte*>(data), size});
    if (!entries) {
        SetLastError(ERROR_BAD_FORMAT);
        return nullptr;
    }
    auto module = std::make_shared<platform::ResourceModule>(*entries, platform::LoadedObjectOf(data));
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const HMODULE handle = registry.modules.Insert(std::move(module));
    registry.Add(handle);
    return handle;
}

BOOL UnregisterModuleResources(HMODULE module) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto removed = registry.modules.Remove(module);
    if (!removed) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    std::erase(registry.order, module);
    removed->ForEach([&](platform::ResourceModule::Resource& resource) {
        registry.found.Remove(resource.handle);
        platform::WithdrawGlobal(resource.loaded);
    });
    return TRUE;
}

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) {
    const platform::ResourceName foldedType = platform::FoldedName(type);
    const platform::ResourceName foldedName = platform::FoldedName(name);
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const HMODULE searched = module ? module : registry.Current();
    platform::ResourceModule* resources = registry.modules.Find(searched);
    if (!resources) SetLastError(module ? ERROR_INVALID_HANDLE : ERROR_RESOURCE_DATA_NOT_FOUND);
    platform::ResourceModule::Resource* resource =
        resources ? resources->Find(foldedType, foldedName) : nullptr;
    if (!resource) {
        if (platform::IsLogging()) {
            platform::LogMissing("resource", ShownName(foldedName) + " of type " + ShownName(foldedType),
                                 ErrorText(GetLastError()));
        }
        return nullptr;
    }
    if (!resource->handle)
        resource->handle = registry.found.Insert(
            std::make_shared<platform::FoundResource>(platform::FoundResource{searched, resource}));
    return resource->handle;
}

DWORD SizeofResource(HMODULE module, HRSRC resource) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const platform::FoundResource* live = registry.Live(module, resource);
    return live ? static_cast<DWORD>(live->resource->data.size()) : 0;
}

HGLOBAL LoadResource(HMODULE module, HRSRC resource) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const platform::FoundResource* live = registry.Live(module, resource);
    if (!live) return nullptr;
    platform::ResourceModule::Resource& loading = *live->resource;
    if (!loading.loaded) loading.loaded = platform::LendGlobal(loading.data.data(), loading.data.size());
    return loading.loaded;
}

LPVOID LockResource(HGLOBAL data) {
    return GlobalLock(data);
}

HMODULE AfxGetResourceHandle() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return registry.Current();
}

void AfxSetResourceHandle(HMODULE module) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    if (module && !registry.modules.Find(module)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return;
    }
    registry.chosen = module;
}

HMODULE ModuleFromAddress(const void* address) {
    const auto object = platform::LoadedObjectOf(address);
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    for (const HMODULE module : registry.order) {
        const auto& holder = registry.modules.Find(module)->Object();
        if (object && holder && holder->base == object->base) return module;
    }
    SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
    return nullptr;
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) {
    std::string path;
    if (!module) {
        path = platform::ProgramPath();
    } else {
        Registry& registry = TheRegistry();
        const std::lock_guard lock(registry.mutex);
        const platform::ResourceModule* found = registry.modules.Find(module);
        if (!found) {
            SetLastError(ERROR_INVALID_HANDLE);
            return 0;
        }
        if (found->Object()) path = found->Object()->path;
    }
    if (path.empty()) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return 0;
    }
    const CString text = FromUtf8(path);
    const std::size_t needed = text.View().size() + 1;
    if (!buffer || size < needed) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::copy_n(text.GetString(), needed, buffer);
    return static_cast<DWORD>(needed - 1);
}
