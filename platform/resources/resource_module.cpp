#include "platform/resources/resource_module.h"

#include <string>
#include <utility>

namespace platform {

ResourceName Folded(const ResourceName& name) {
    if (name.IsNumber()) return name;
    std::u16string text(name.Text());
    for (char16_t& unit : text)
        if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - (u'a' - u'A'));
    return ResourceName(std::move(text));
}

ResourceName FoldedName(LPCWSTR name) {
    if (IS_INTRESOURCE(name)) return ResourceName(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)));
    return Folded(ResourceName(std::u16string(name)));
}

ResourceModule::ResourceModule(const std::vector<ResourceEntry>& entries, std::optional<LoadedObject> object)
    : object_(std::move(object)) {
    for (const ResourceEntry& entry : entries)
        types_[Folded(entry.type)].try_emplace(Folded(entry.name), Resource{entry.data, nullptr, nullptr});
}

ResourceModule::Resource* ResourceModule::Find(const ResourceName& type, const ResourceName& name) {
    const auto names = types_.find(type);
    if (names == types_.end()) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return nullptr;
    }
    const auto found = names->second.find(name);
    if (found == names->second.end()) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return nullptr;
    }
    return &found->second;
}

}  // namespace platform
