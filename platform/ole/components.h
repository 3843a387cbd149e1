// The classes that CoCreateInstance knows.
#pragma once

#include <platform/components.h>

namespace platform {

// Made by whoever implements a class, as a static object: it is known as long as that lives.
class ComponentClass {
  public:
    // Gives the asked interface with one holder, or fails as CoCreateInstance does.
    using Make = HRESULT (*)(const GUID& interfaceId, void** object);
    ComponentClass(const GUID& classId, Make make);
    ~ComponentClass();
    ComponentClass(const ComponentClass&) = delete;
    ComponentClass& operator=(const ComponentClass&) = delete;

    const GUID classId;
    const Make make;
};

}  // namespace platform
