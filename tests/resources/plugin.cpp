// A library that names its own resource module.
#include <platform/resources.h>

extern "C" PLATFORM_API void NamePluginModule(HMODULE* module) {
    *module = ModuleFromAddress(reinterpret_cast<const void*>(&NamePluginModule));
}
