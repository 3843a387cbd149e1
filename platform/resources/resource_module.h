// The resources of one module, indexed by type and name.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include <platform/resources.h>
#include <platform/types.h>

#include "platform/resources/loaded_object.h"
#include "platform/resources/resource_file.h"

namespace platform {

// The name with its ASCII letters in upper case, as two names are compared.
[[nodiscard]] ResourceName Folded(const ResourceName& name);
// The name that a caller passed, folded: a MAKEINTRESOURCE number or a terminated text.
[[nodiscard]] ResourceName FoldedName(LPCWSTR name);

// Where several entries share a type and a name (variants of a language), the first in the file answers.
class ResourceModule {
  public:
    struct Resource {
        std::span<const std::byte> data;
        HRSRC handle;  // both empty until first asked for
        HGLOBAL loaded;
    };

    ResourceModule(const std::vector<ResourceEntry>& entries, std::optional<LoadedObject> object);

    // Names are folded. Null with the last error when there is none.
    Resource* Find(const ResourceName& type, const ResourceName& name);
    // What holds the module's bytes; empty when they came from no file.
    const std::optional<LoadedObject>& Object() const { return object_; }
    template <class F>
    void ForEach(F f) {
        for (auto& [type, names] : types_)
            for (auto& [name, resource] : names)
                f(resource);
    }

  private:
    // In order: no choice of names makes looking them up slow.
    std::map<ResourceName, std::map<ResourceName, Resource>> types_;
    std::optional<LoadedObject> object_;
};

}  // namespace platform
