// The component services. Nothing has to be started here: a thread's count of starts is all there is, so that
// nested starts answer as callers expect.
#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/ole/components.h"

namespace platform {
namespace {

thread_local ULONG starts = 0;

struct Classes {
    std::mutex mutex;  // objects are made on any thread
    std::vector<const ComponentClass*> all;
};

// Never destroyed: classes come and go while static objects are made and destroyed.
Classes& TheClasses() {
    static Classes* const classes = new Classes;
    return *classes;
}

ComponentClass::Make MakerOf(const GUID& classId) {
    Classes& classes = TheClasses();
    const std::lock_guard lock(classes.mutex);
    const auto found =
        std::ranges::find_if(classes.all, [&](const auto* known) { return known->classId == classId; });
    return found == classes.all.end() ? nullptr : (*found)->make;
}

}  // namespace

ComponentClass::ComponentClass(const GUID& id, Make maker) : classId(id), make(maker) {
    const std::lock_guard lock(TheClasses().mutex);
    TheClasses().all.push_back(this);
}

ComponentClass::~ComponentClass() {
    const std::lock_guard lock(TheClasses().mutex);
    std::erase(TheClasses().all, this);
}

}  // namespace platform

HRESULT CoInitialize(void* reserved) {
    if (reserved) return E_INVALIDARG;
    return platform::starts++ == 0 ? S_OK : S_FALSE;
}

void CoUninitialize() {
    if (platform::starts > 0) --platform::starts;
}

HRESULT CoCreateInstance(const GUID& classId, IUnknown* outer, DWORD context, const GUID& interfaceId,
                         void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (platform::starts == 0) return CO_E_NOTINITIALIZED;
    if (outer) return E_INVALIDARG;
    const platform::ComponentClass::Make make =
        context == CLSCTX_INPROC_SERVER ? platform::MakerOf(classId) : nullptr;
    return make ? make(interfaceId, object) : REGDB_E_CLASSNOTREG;
}
